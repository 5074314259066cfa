#include "testunit.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <algorithm>

namespace {

const QString source = QStringLiteral(PRODUCTION_SOURCE_DIR);

/// The lines of a journal: those of the UI thread, then those of the worker, which runs beside it.
QStringList byThread(const QByteArray &journal)
{
    static const QRegularExpression ofUi(
        QStringLiteral("\"event\"|::showMessage|ScreenLockCtrl::|TestMode|ProductionMode|"
                       "BacklightLevel_"));
    QStringList lines = QString::fromUtf8(journal).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    std::stable_partition(lines.begin(), lines.end(),
                          [](const QString &line) { return line.contains(ofUi); });
    return lines;
}

} // namespace

/// The sticks of examples/ and the files in the documentation do what is said of them.
class TestExamples : public QObject
{
    Q_OBJECT

private slots:
    void stick_data();
    void stick();
    void documentation_data();
    void documentation();
};

void TestExamples::stick_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("full-line") << "full-line" << QStringList();
    QTest::newRow("serials-only") << "serials-only" << QStringList();
    QTest::newRow("several-displays-8")
        << "several-displays" << QStringList{QStringLiteral("--display-size"), QStringLiteral("8")};
    QTest::newRow("several-displays-10.1")
        << "several-displays"
        << QStringList{QStringLiteral("--display-size"), QStringLiteral("10.1")};
    QTest::newRow("silent-system") << "silent-system" << QStringList();
}

/// Through the program, as a whole: its journal is that of tests/examples/.
void TestExamples::stick()
{
    QFETCH(QString, folder);
    QFETCH(QStringList, options);
    const QTemporaryDir work;
    const QString stick = work.filePath(QStringLiteral("stick"));
    QCOMPARE(QProcess::execute(
                 QStringLiteral("cp"),
                 {QStringLiteral("-r"), source + QStringLiteral("/examples/") + folder, stick}),
             0);
    const QString journal = work.filePath(QStringLiteral("journal"));
    QProcess bench;
    bench.setProcessChannelMode(QProcess::MergedChannels);
    bench.start(QStringLiteral(PRODUCTION_BENCH),
                QStringList{QStringLiteral("--unit"), work.filePath(QStringLiteral("unit")),
                            QStringLiteral("--stick"), stick, QStringLiteral("--journal"), journal,
                            QStringLiteral("--unplug-when-done"), QStringLiteral("--timeout"),
                            QStringLiteral("120")}
                    + options);
    QVERIFY(bench.waitForFinished(150000));
    QVERIFY2(bench.exitCode() == 0, bench.readAll().constData());

    const QByteArray happened = readFile(journal).replace(stick.toUtf8(), "STICK");
    const QString expected = source + QStringLiteral("/tests/examples/")
        + QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".jsonl");
    QCOMPARE(byThread(happened), byThread(readFile(expected)));
}

/**
 * An example of docs/production-file.md is an ini block below a comment
 * `<!-- example: JSON -->`, with the members
 * - "shows": the pop-ups after the opening ones, as "code text";
 * - "stores": what the unit has afterwards, "Area/key" to value;
 * - "display", "steps": the unit's display size and step range.
 * A second ini block below `<!-- afterwards -->` is the file that the pass leaves.
 */
void TestExamples::documentation_data()
{
    QTest::addColumn<QJsonObject>("example");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("afterwards");
    const QString text =
        QString::fromUtf8(readFile(source + QStringLiteral("/docs/production-file.md")));
    static const QRegularExpression block(
        QStringLiteral(
            "<!-- example: (\\{.*?\\}) -->\\s*```ini\\n(.*?)```"
            "(?:(?:(?!<!-- example)(?!```).)*<!-- afterwards -->\\s*```ini\\n(.*?)```)?"),
        QRegularExpression::DotMatchesEverythingOption);
    int blocks = 0;
    for (auto it = block.globalMatch(text); it.hasNext(); ++blocks) {
        const QRegularExpressionMatch match = it.next();
        const int line = text.left(match.capturedStart()).count(QLatin1Char('\n')) + 1;
        const QJsonDocument example = QJsonDocument::fromJson(match.captured(1).toUtf8());
        QVERIFY2(example.isObject(), qPrintable(match.captured(1)));
        QTest::addRow("line %d", line)
            << example.object() << match.captured(2).toUtf8() << match.captured(3).toUtf8();
    }
    QCOMPARE(blocks,
             text.count(QStringLiteral("```ini")) - text.count(QStringLiteral("<!-- afterwards")));
}

void TestExamples::documentation()
{
    QFETCH(QJsonObject, example);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, afterwards);
    bench::HeadUnitConfig config;
    config.displaySize = example[QStringLiteral("display")].toString();
    config.stepRange = quint8(example[QStringLiteral("steps")].toInt(config.stepRange));
    TestUnit unit(config);
    const QString stick = unit.makeStick(file);
    QVERIFY(unit.runPass(stick));

    QJsonArray shown;
    for (const QString &popUp : unit.popUps().mid(2))
        shown.append(popUp.trimmed());
    QCOMPARE(shown, example[QStringLiteral("shows")].toArray());
    const QJsonObject stores = example[QStringLiteral("stores")].toObject();
    for (auto it = stores.begin(); it != stores.end(); ++it) {
        const auto area = bench::areaFromName(it.key().section(QLatin1Char('/'), 0, 0));
        QVERIFY2(area, qPrintable(it.key()));
        const QVariant value = unit.stored(*area, it.key().section(QLatin1Char('/'), 1));
        QCOMPARE(QJsonValue::fromVariant(value), it.value());
    }
    const QByteArray left = readFile(stick + QStringLiteral("/production.ini"));
    QCOMPARE(QByteArray(left).replace("\r\n", "\n"), afterwards.isEmpty() ? file : afterwards);
}

QTEST_GUILESS_MAIN(TestExamples)
#include "tst_examples.moc"
