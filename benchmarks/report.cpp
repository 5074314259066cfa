#include "report.h"

#include "rows.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int growthFrom = 10'000;
constexpr int growthTo = 1'000'000;

constexpr double mebi = 1024 * 1024;

/// Three significant digits.
QString number(double value)
{
    const int digits = value > 0 ? int(std::floor(std::log10(value))) + 1 : 1;
    return QString::number(value, 'f', std::clamp(3 - digits, 0, 3));
}

QString milliseconds(double seconds)
{
    return number(1000 * seconds);
}

QString tableRow(const QStringList &cells)
{
    return QLatin1String("| ") + cells.join(QLatin1String(" | ")) + QLatin1String(" |\n");
}

double medianOf(QVector<double> values)
{
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void Report::add(const QByteArray &row, int serials, const Measurement &measurement)
{
    measurements[serials][row].append(measurement);
}

Report::Rounds Report::rounds(const Row &row, int serials) const
{
    return measurements[serials][row.id];
}

double Report::median(const Rounds &rounds, Quantity quantity)
{
    QVector<double> values;
    for (const Measurement &round : rounds)
        values.append(round.*quantity);
    return medianOf(values);
}

double Report::ratio(const Rounds &rounds, const Rounds &others, Quantity quantity)
{
    Q_ASSERT(rounds.size() == others.size());
    QVector<double> values;
    for (int i = 0; i < rounds.size(); ++i)
        values.append(rounds[i].*quantity / (others[i].*quantity));
    return medianOf(values);
}

/// How much more CPU time the row takes for a hundred times the serials.
double Report::growth(const Row &row) const
{
    return ratio(rounds(row, growthTo), rounds(row, growthFrom), &Measurement::cpu);
}

QString Report::tables() const
{
    QString text;
    for (auto it = measurements.cbegin(); it != measurements.cend(); ++it) {
        if (it.key() > 0)
            text += table(it.key()) + QLatin1Char('\n');
    }
    return text + boot();
}

QString Report::table(int serials) const
{
    QString text =
        QStringLiteral("%1 serials:\n\n"
                       "| | CPU ms | flush ms | CPU, Qt = 1 | CPU, bytes = 1 | peak MiB |\n"
                       "|---|--:|--:|--:|--:|--:|\n")
            .arg(serials);
    for (const Row *row : rows::scaling()) {
        const Rounds measured = rounds(*row, serials);
        const auto over = [&](const Row &other) {
            return number(ratio(measured, rounds(other, serials), &Measurement::cpu));
        };
        text += tableRow(
            {QString::fromLatin1(row->title), milliseconds(median(measured, &Measurement::cpu)),
             milliseconds(median(measured, &Measurement::flush)), over(rows::takeOneQt),
             over(rows::takeOneBytes), number(median(measured, &Measurement::peak) / mebi)});
    }
    return text;
}

QString Report::boot() const
{
    return QStringLiteral("Normal boot: %1 ms of CPU, %2 threads started.\n")
        .arg(milliseconds(median(rounds(rows::boot, 0), &Measurement::cpu)),
             number(median(rounds(rows::boot, 0), &Measurement::threads)));
}

QString Report::limits()
{
    failed = 0;
    const Rounds boots = rounds(rows::boot, 0);
    return ratioLimit(rows::reader, rows::plainReader, comparedSize, 0.45)
        + ratioLimit(rows::writer, rows::plainWriter, comparedSize, 0.35)
        + ratioLimit(rows::takeOne, rows::takeOneQt, comparedSize, 1.35)
        + ratioLimit(rows::takeOne, rows::takeOneIniFormat, comparedSize, 0.75)
        + ratioLimit(rows::choosing, rows::childKeys, comparedSize, 1.2)
        + ratioLimit(rows::choosing, rows::childKeys, growthTo, 1.2) + growthLimits()
        + limit(QStringLiteral("peak memory at 1M, take-one / take-one-ini"),
                ratio(rounds(rows::takeOne, growthTo), rounds(rows::takeOneIniFormat, growthTo),
                      &Measurement::peak),
                1, {})
        + limit(QStringLiteral("normal boot"), 1000 * median(boots, &Measurement::cpu), 1,
                QStringLiteral(" ms"))
        + limit(QStringLiteral("threads started on a normal boot"),
                median(boots, &Measurement::threads), 0, {});
}

QString Report::limit(const QString &title, double value, double most, const QString &unit)
{
    const bool holds = value <= most;
    if (!holds)
        ++failed;
    return QStringLiteral("%1  %2: %3%5 (at most %4%5)\n")
        .arg(QLatin1String(holds ? "pass" : "FAIL"), title, number(value), number(most), unit);
}

/// CPU time of @p row over that of @p other.
QString Report::ratioLimit(const Row &row, const Row &other, int serials, double most)
{
    return limit(QStringLiteral("%1 / %2 at %3")
                     .arg(QString::fromLatin1(row.id), QString::fromLatin1(other.id))
                     .arg(serials),
                 ratio(rounds(row, serials), rounds(other, serials), &Measurement::cpu), most, {});
}

/**
 * Nothing of the module's may grow faster than n log n. What that comes to by time, once the memory
 * no longer fits the caches, shows the mere sort; a tenth more is allowed, for times are never
 * quite the same. The peers are only noted, and a choice, which is childKeys() for the most part,
 * is compared with that.
 */
QString Report::growthLimits()
{
    const double nLogN = growthTo * std::log(growthTo) / (growthFrom * std::log(growthFrom));
    const double most = 1.1 * std::max(nLogN, growth(rows::sorting));
    const QVector<const Row *> judged = {&rows::takeOne, &rows::reader, &rows::writer, &rows::pass};
    QString limits;
    QString notes;
    for (const Row *row : rows::scaling()) {
        const QString title =
            QStringLiteral("growth from 10k to 1M, %1").arg(QString::fromLatin1(row->title));
        if (judged.contains(row))
            limits += limit(title, growth(*row), most, {});
        else
            notes += QStringLiteral("note  %1: %2\n").arg(title, number(growth(*row)));
    }
    return limits + notes;
}
