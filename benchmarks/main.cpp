#include "report.h"
#include "rows.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr int bootRounds = 20;

/// Few enough that a round of the largest files takes seconds.
int iterations(int serials)
{
    return std::clamp(20'000 / std::max(serials, 1), 1, 100);
}

constexpr int rounds = 9; // odd, for their median

/// In each round, how often the rows are measured in turn; most where they are compared.
int turns(int serials)
{
    return serials == Report::comparedSize ? 9 : 1;
}

QByteArray benchmarkName(const Row &row, int serials)
{
    return QByteArray(row.id) + '/' + QByteArray::number(serials);
}

void registerRow(const Row &row, int serials)
{
    benchmark::RegisterBenchmark(row.id, row.run)
        ->Arg(serials)
        ->UseManualTime()
        ->Iterations(iterations(serials))
        ->Unit(benchmark::kSecond);
}

/// Runs the one row that a child process is for.
int runBenchmarks(int argc, char **argv, const QVector<int> &sizes)
{
    for (const Row *row : rows::scaling()) {
        for (int serials : sizes)
            registerRow(*row, serials);
    }
    benchmark::RegisterBenchmark(rows::boot.id, rows::boot.run)
        ->Arg(0)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kSecond);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

/// A row measured in a process of its own, so that its memory is its own and no cache is warm.
Measurement measure(const Row &row, int serials)
{
    const QByteArray name = benchmarkName(row, serials);
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice()); // the module's log
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--benchmark_format=json"),
                   QStringLiteral("--benchmark_filter=^%1/").arg(QString::fromLatin1(name))});
    process.waitForFinished(-1);
    const QJsonObject result = QJsonDocument::fromJson(process.readAllStandardOutput())
                                   .object()[QLatin1String("benchmarks")]
                                   .toArray()[0]
                                   .toObject();
    if (result.isEmpty() || result[QLatin1String("error_occurred")].toBool())
        qFatal("%s failed: %s", name.constData(),
               qUtf8Printable(result[QLatin1String("error_message")].toString()));
    return {result[QLatin1String("real_time")].toDouble(),
            result[QLatin1String("flush")].toDouble(), result[QLatin1String("peak")].toDouble(),
            result[QLatin1String("threads")].toDouble()};
}

void measureInto(Report &report, const Row &row, int serials)
{
    if (isatty(STDERR_FILENO))
        fprintf(stderr, "\r%-30s\r", benchmarkName(row, serials).constData());
    report.add(row.id, serials, measure(row, serials));
}

int printReport(const QVector<int> &sizes)
{
    Report report;
    for (int round = 0; round < rounds; ++round) {
        for (int serials : sizes) {
            for (int turn = 0; turn < turns(serials); ++turn) {
                for (const Row *row : rows::scaling())
                    measureInto(report, *row, serials);
            }
        }
    }
    for (int round = 0; round < bootRounds; ++round)
        measureInto(report, rows::boot, 0);

    // Markdown, for docs/performance.md.
    printf("%s\n```\n%s```\n", qUtf8Printable(report.tables()), qUtf8Printable(report.limits()));
    return report.allHold() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<int> sizes = {10, 1'000, 10'000, 100'000, 1'000'000};
    QCoreApplication application(argc, argv);
    const bool single = std::any_of(argv + 1, argv + argc, [](const char *argument) {
        return QByteArray(argument).startsWith("--benchmark");
    });
    if (argc > 1 && !single) {
        fprintf(stderr,
                "production-benchmark: without options it measures everything (some "
                "minutes); --benchmark_filter and the like measure single rows\n");
        return 2;
    }
    return single ? runBenchmarks(argc, argv, sizes) : printReport(sizes);
}
