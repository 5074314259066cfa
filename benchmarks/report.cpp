#include "report.h"

#include "rows.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int comparedSize = 100'000; ///< Serials at which rows are compared with each other.
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

} // namespace

void Measurement::takeLeast(const Measurement &other)
{
    cpu = std::min(cpu, other.cpu);
    flush = std::min(flush, other.flush);
    peak = std::min(peak, other.peak);
    threads = std::max(threads, other.threads);
}

void Report::add(const QByteArray &row, int serials, const Measurement &measurement)
{
    if (has(row, serials))
        measurements[serials][row].takeLeast(measurement);
    else
        measurements[serials].insert(row, measurement);
}

bool Report::has(const QByteArray &row, int serials) const
{
    return measurements.value(serials).contains(row);
}

Measurement Report::at(const QByteArray &row, int serials) const
{
    return measurements.value(serials).value(row);
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
    const double qt = at(rows::takeOneQt.id, serials).cpu;
    const double bytes = at(rows::takeOneBytes.id, serials).cpu;
    for (const Row *row : rows::scaling()) {
        if (!has(row->id, serials))
            continue;
        const Measurement m = at(row->id, serials);
        text +=
            tableRow({QString::fromLatin1(row->title), milliseconds(m.cpu), milliseconds(m.flush),
                      number(m.cpu / qt), number(m.cpu / bytes), number(m.peak / mebi)});
    }
    return text;
}

QString Report::boot() const
{
    const Measurement m = at(rows::boot.id, 0);
    return QStringLiteral("Normal boot: %1 ms of CPU, %2 threads started.\n")
        .arg(milliseconds(m.cpu), QString::number(m.threads));
}

QString Report::limits()
{
    failed = 0;
    QString text = ratio(rows::reader.id, rows::plainReader.id, 0.45)
        + ratio(rows::writer.id, rows::plainWriter.id, 0.35)
        + ratio(rows::takeOne.id, rows::takeOneQt.id, 1.35)
        + ratio(rows::takeOne.id, rows::takeOneIniFormat.id, 0.75)
        + ratio(rows::choosing.id, rows::childKeys.id, 1.2);
    text += growthLimits();
    if (has(rows::takeOne.id, growthTo) && has(rows::takeOneIniFormat.id, growthTo)) {
        text += limit(QStringLiteral("peak memory at 1M, take-one / take-one-ini"),
                      at(rows::takeOne.id, growthTo).peak
                          / at(rows::takeOneIniFormat.id, growthTo).peak,
                      1, {});
    }
    const Measurement boot = at(rows::boot.id, 0);
    return text + limit(QStringLiteral("normal boot"), 1000 * boot.cpu, 1, QStringLiteral(" ms"))
        + limit(QStringLiteral("threads started on a normal boot"), boot.threads, 0, {});
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
QString Report::ratio(const QByteArray &row, const QByteArray &other, double most)
{
    if (!has(row, comparedSize) || !has(other, comparedSize))
        return QString();
    return limit(
        QStringLiteral("%1 / %2").arg(QString::fromLatin1(row), QString::fromLatin1(other)),
        at(row, comparedSize).cpu / at(other, comparedSize).cpu, most, {});
}

/// How much more CPU time the row takes for a hundred times the serials, without that of @p part.
double Report::growth(const QByteArray &row, const QByteArray &part) const
{
    const auto cpu = [&](int serials) { return at(row, serials).cpu - at(part, serials).cpu; };
    return has(row, growthFrom) && has(row, growthTo) ? cpu(growthTo) / cpu(growthFrom) : 0;
}

/**
 * What is the module's must not grow faster than n log n. childKeys() does by time, in which memory
 * that no longer fits the caches counts, so that a choice is judged without it.
 */
QString Report::growthLimits()
{
    const double nLogN = growthTo * std::log(growthTo) / (growthFrom * std::log(growthFrom));
    const QString title = QStringLiteral("growth from 10k to 1M, %1");
    QString text;
    for (const Row &row : {rows::takeOne, rows::reader, rows::writer, rows::pass})
        text += limit(title.arg(QString::fromLatin1(row.title)), growth(row.id), nLogN, {});
    text += limit(title.arg(QStringLiteral("choosing beyond childKeys()")),
                  growth(rows::choosing.id, rows::childKeys.id), nLogN, {});
    for (const Row &row :
         {rows::choosing, rows::childKeys, rows::takeOneQt, rows::takeOneIniFormat,
          rows::takeOneGlib, rows::takeOneBytes, rows::plainReader, rows::plainWriter})
        text += QStringLiteral("note  %1: %2\n")
                    .arg(title.arg(QString::fromLatin1(row.title)), number(growth(row.id)));
    return text;
}
