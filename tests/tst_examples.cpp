#include "testunit.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <algorithm>

namespace {

const QString source = PRODUCTION_SOURCE_DIR;

/// The lines of a journal: those of the UI thread, then those of the worker, which runs beside it.
QStringList byThread(const QByteArray &journal)
{
    static const QRegularExpression ofUi(
        "\"event\"|::showMessage|ScreenLockCtrl::|TestMode|ProductionMode|"
        "BacklightLevel_");
    QStringList lines = QString::fromUtf8(journal).split('\n', Qt::SkipEmptyParts);
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
    QTest::addColumn<QString>("options");
    QTest::newRow("full-line") << "full-line"
                               << "";
    QTest::newRow("serials-only") << "serials-only"
                                  << "";
    QTest::newRow("several-displays-8") << "several-displays"
                                        << "--display-size 8";
    QTest::newRow("several-displays-10.1") << "several-displays"
                                           << "--display-size 10.1";
    QTest::newRow("silent-system") << "silent-system"
                                   << "";
}

/// Through the program, as a whole: what it adds to the journal stands in tests/examples/.
void TestExamples::stick()
{
    QFETCH(QString, folder);
    QFETCH(QString, options);
    const QTemporaryDir work;
    const QString stick = work.filePath("stick");
    QCOMPARE(QProcess::execute("cp", {"-r", source + "/examples/" + folder, stick}), 0);
    const QByteArray earlier = "{\"event\":\"earlier\"}\n";
    QVERIFY(writeFile(work.filePath("journal"), earlier));
    const Outcome outcome =
        runProgram(PRODUCTION_BENCH, work.path(),
                   "--unit unit --stick stick --journal journal --unplug-when-done " + options);
    QVERIFY2(outcome.exitCode == 0, outcome.err.constData());

    const QByteArray happened = readFile(work.filePath("journal")).replace(stick.toUtf8(), "STICK");
    const QString expected = source + "/tests/examples/" + QTest::currentDataTag() + ".jsonl";
    QCOMPARE(byThread(happened), byThread(earlier + readFile(expected)));
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
    const QString text = QString::fromUtf8(readFile(source + "/docs/production-file.md"));
    static const QRegularExpression block(
        QStringLiteral(
            "<!-- example: (\\{.*?\\}) -->\\s*```ini\\n(.*?)```"
            "(?:(?:(?!<!-- example)(?!```).)*<!-- afterwards -->\\s*```ini\\n(.*?)```)?"),
        QRegularExpression::DotMatchesEverythingOption);
    int blocks = 0;
    for (auto it = block.globalMatch(text); it.hasNext(); ++blocks) {
        const QRegularExpressionMatch match = it.next();
        const int line = text.left(match.capturedStart()).count('\n') + 1;
        const QJsonDocument example = QJsonDocument::fromJson(match.captured(1).toUtf8());
        QVERIFY2(example.isObject(), qPrintable(match.captured(1)));
        QTest::addRow("line %d", line)
            << example.object() << match.captured(2).toUtf8() << match.captured(3).toUtf8();
    }
    QCOMPARE(blocks, text.count("```ini") - text.count("<!-- afterwards"));
}

void TestExamples::documentation()
{
    QFETCH(QJsonObject, example);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, afterwards);
    bench::HeadUnitConfig config;
    config.displaySize = example["display"].toString();
    config.stepRange = quint8(example["steps"].toInt(config.stepRange));
    TestUnit unit(config);
    const QString stick = unit.makeStick(file);
    QVERIFY(unit.runPass(stick));

    QJsonArray shown;
    for (const QString &popUp : unit.popUps().mid(2))
        shown.append(popUp.trimmed());
    QCOMPARE(shown, example["shows"].toArray());
    const QJsonObject stores = example["stores"].toObject();
    for (auto it = stores.begin(); it != stores.end(); ++it) {
        const auto area = bench::areaFromName(it.key().section('/', 0, 0));
        QVERIFY2(area, qPrintable(it.key()));
        const QVariant value = unit.stored(*area, it.key().section('/', 1));
        QCOMPARE(QJsonValue::fromVariant(value), it.value());
    }
    const QByteArray left = readFile(stick + "/production.ini");
    QCOMPARE(QByteArray(left).replace("\r\n", "\n"), afterwards.isEmpty() ? file : afterwards);
}

QTEST_GUILESS_MAIN(TestExamples)
#include "tst_examples.moc"
