#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

/// What one round of a row showed.
struct Measurement
{
    double cpu; ///< seconds, outside of flushes
    double flush; ///< seconds
    double peak; ///< bytes
    double threads; ///< started by the row
};

/**
 * The measurements of one run, and what is read from them: of every quantity the median of its
 * rounds. A ratio is the median of each round's ratio, since what else the machine did in a round
 * met both rows.
 */
class Report
{
public:
    static constexpr int comparedSize = 100'000; ///< Serials at which rows are compared.

    /// To be called round by round.
    void add(const QByteArray &row, int serials, const Measurement &measurement);

    /// A Markdown table for every number of serials, and the cost of a normal boot.
    QString tables() const;

    /// The limits that hold for the measured rows, a line each with "pass" or "FAIL".
    QString limits();
    bool allHold() const { return failed == 0; }

private:
    using Quantity = double Measurement::*;

    bool has(const QByteArray &row, int serials) const;
    double median(const QByteArray &row, int serials, Quantity quantity) const;
    double ratio(const QByteArray &row, const QByteArray &other, int serials,
                 Quantity quantity) const;
    double growth(const QByteArray &row) const;

    QString table(int serials) const;
    QString boot() const;

    QString limit(const QString &title, double value, double most, const QString &unit);
    QString ratioLimit(const QByteArray &row, const QByteArray &other, double most);
    QString growthLimits();

    QMap<int, QMap<QByteArray, QVector<Measurement>>> measurements; ///< by serials, then row
    int failed = 0;
};
