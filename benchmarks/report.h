#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

/// What one row showed: the least of several rounds, for the machine may have other work as well.
struct Measurement
{
    double cpu = 0; ///< seconds, outside of flushes
    double flush = 0; ///< seconds
    double peak = 0; ///< bytes
    int threads = 0; ///< started by the row

    void takeLeast(const Measurement &other);
};

/// The measurements of one run, and what is read from them.
class Report
{
public:
    void add(const QByteArray &row, int serials, const Measurement &measurement);

    /// A Markdown table for every number of serials, and the cost of a normal boot.
    QString tables() const;

    /// The limits that hold for the measured rows, a line each with "pass" or "FAIL".
    QString limits();
    bool allHold() const { return failed == 0; }

private:
    bool has(const QByteArray &row, int serials) const;
    Measurement at(const QByteArray &row, int serials) const;
    QString table(int serials) const;
    QString boot() const;

    QString limit(const QString &title, double value, double most, const QString &unit);
    QString ratio(const QByteArray &row, const QByteArray &other, double most);
    double growth(const QByteArray &row, const QByteArray &part = {}) const;
    QString growthLimits();

    QMap<int, QMap<QByteArray, Measurement>> measurements; ///< by number of serials, then row
    int failed = 0;
};
