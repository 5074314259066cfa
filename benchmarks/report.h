#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

struct Row;

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

    /// The n-th measurements of all rows and numbers of serials are of one round.
    void add(const QByteArray &row, int serials, const Measurement &measurement);

    /// A Markdown table for every number of serials, and the cost of a normal boot.
    QString tables() const;

    /// A line for each limit, "pass" or "FAIL", and notes on the peers.
    QString limits();
    bool allHold() const { return failed == 0; }

private:
    using Rounds = QVector<Measurement>;
    using Quantity = double Measurement::*;

    Rounds rounds(const Row &row, int serials) const;
    double growth(const Row &row) const;

    static double median(const Rounds &rounds, Quantity quantity);
    static double ratio(const Rounds &rounds, const Rounds &others, Quantity quantity);

    QString table(int serials) const;
    QString boot() const;

    QString limit(const QString &title, double value, double most, const QString &unit);
    QString ratioLimit(const Row &row, const Row &other, int serials, double most);
    QString growthLimits();

    QMap<int, QMap<QByteArray, Rounds>> measurements; ///< by serials, then row
    int failed = 0;
};
