// The bench's window, driven by clicks as its users drive it, with the module behind it.

#include "bench/window/board.h"
#include "bench/window/elidedlabel.h"
#include "bench/window/lamp.h"
#include "bench/window/mainwindow.h"
#include "bench/window/screenview.h"
#include "translations.h"

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

using bench::Board;
using bench::Lamp;
using bench::UnitState;

namespace {

constexpr int patience = 30000; // ms; only ever spent by a test that fails

const char stickContent[] =
    "[Panel]\nmode=1\nbacklight_steps=0,10,40,90,120,150,180,200,220,240,255\n"
    "backlight_day=255\nbacklight_night=0\n"
    "[SN]\nmode=1\nSN1\nSN2\nSN3\n"
    "[SK]\nmode=1\nSK1\n"
    "[CANBUS]\nmode=1\nid=5\n"
    "[DirectionKey]\nmode=1\n";

QString program()
{
    return QCoreApplication::applicationDirPath() + "/production-bench";
}

/// Mean lightness, 0 to 255.
int lightness(QWidget *widget)
{
    const QImage image =
        widget->grab().toImage().scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return qGray(image.pixel(0, 0));
}

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void wholeUnit();
    void unitAfterUnit();
    void unitWithoutStickRunsNormally();
    void screenFollowsTheBacklight();
    void droppedThingsThatAreNoFolders();
    void unitThatCannotBePlaced();
    void closingEndsTheModule();
    void programEndsBySignalInMidPass();
    void programWithoutScreenSaysSo();
    void everythingIsReachableAndFits_data();
    void everythingIsReachableAndFits();

private:
    template <typename Widget>
    Widget *find(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    void click(const char *name);
    void drop(const QString &path);
    bool reach(UnitState::Stage stage);
    bool startWithStick();
    bool unplug();
    bool shows(const char *label, const QString &text) const
    {
        return find<QLabel>(label)->text().contains(text);
    }
    Lamp::Light light(const char *lamp) const { return find<Lamp>(lamp)->light(); }
    QStringList results() const;
    QString storedSerial() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_stick;
    bench::Options m_options;
    std::unique_ptr<Board> m_board;
    std::unique_ptr<bench::MainWindow> m_window;
};

void WindowTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_stick = m_folder->filePath("stick");
    QVERIFY(QDir().mkdir(m_stick));
    QFile file(m_stick + "/production.ini");
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(stickContent) > 0 && file.flush());

    m_options = bench::Options();
    m_options.window = true;
    m_options.unit.unitDirectory = m_folder->filePath("units");
    m_board = std::make_unique<Board>(m_options);
    QVERIFY(!bench::HeadUnit::exists());
    QString error;
    QVERIFY2(m_board->open(&error), qPrintable(error));
    m_window = std::make_unique<bench::MainWindow>(*m_board);
    m_window->show();
}

void WindowTest::cleanup()
{
    m_window->close();
    QTRY_VERIFY_WITH_TIMEOUT(!m_board->isBusy(), patience);
    m_window.reset();
    m_board.reset();
    qDeleteAll(qApp->findChildren<QTranslator *>());
}

void WindowTest::click(const char *name)
{
    auto *button = find<QAbstractButton>(name);
    // A radio button only takes clicks on its sign and its text.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
}

void WindowTest::drop(const QString &path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &enter);
    if (!enter.isAccepted())
        return;
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &event);
}

bool WindowTest::reach(UnitState::Stage stage)
{
    return QTest::qWaitFor([&] { return m_board->state().stage == stage; }, patience);
}

bool WindowTest::startWithStick()
{
    drop(m_stick);
    click("proceed");
    return reach(UnitState::Waiting);
}

bool WindowTest::unplug()
{
    click("plug");
    return reach(UnitState::Ended);
}

/// The lines below the pop-up on the unit's screen.
QStringList WindowTest::results() const
{
    QStringList texts;
    auto *screen = m_window->findChild<bench::ScreenView *>();
    for (auto *label : screen->findChildren<bench::ElidedLabel *>())
        texts.append(label->text());
    return texts;
}

QString WindowTest::storedSerial() const
{
    const auto items = find<QTreeWidget>("stored")->findItems("SN", Qt::MatchRecursive);
    return items.size() == 1 ? items.first()->text(1) : QString();
}

void WindowTest::wholeUnit()
{
    QVERIFY(startWithStick());
    QVERIFY(shows("stage", "In order"));
    QVERIFY(results().contains("Serial number stored: SN1"));
    QVERIFY(shows("stickContent", "SN: 2 left"));
    QVERIFY(shows("stickContent", "SK: none left"));
    QCOMPARE(storedSerial(), "SN1");
    QCOMPARE(m_board->state().stepTable.value(3), 90);

    QCOMPARE(light("canbusLamp"), Lamp::Amber);
    QVERIFY(shows("canbusTitle", "5"));
    click("canbusSeen");
    QTRY_COMPARE(light("canbusLamp"), Lamp::Green);
    QCOMPARE(light("mcuLamp"), Lamp::Amber);
    QVERIFY(shows("popupText", "the test is passed"));
    click("mcuSeen");
    QTRY_COMPARE(light("mcuLamp"), Lamp::Green);

    QVERIFY(unplug());
    QVERIFY(shows("popupText", "has exited production mode"));
    QVERIFY(results().contains("Serial number stored: SN1"));
    QCOMPARE(light("canbusLamp"), Lamp::Green);
    QVERIFY(!find<QPushButton>("canbusSeen")->isEnabled());
    QCOMPARE(find<QTreeWidget>("history")->topLevelItemCount(), m_board->state().popups.size());
}

void WindowTest::unitAfterUnit()
{
    QVERIFY(startWithStick());
    // With the stick still plugged, one click unplugs it and goes on.
    click("proceed");
    QVERIFY(reach(UnitState::Running));
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), "SN2");
    // What went wrong stays to be seen, whatever follows.
    const QString trouble = "No SK value available";
    QVERIFY(shows("stage", trouble));
    QCOMPARE(light("canbusLamp"), Lamp::Amber);
    click("canbusSeen");
    QTRY_COMPARE(light("canbusLamp"), Lamp::Green);
    QVERIFY(results().contains(trouble));

    QVERIFY(unplug());
    click("proceed");
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), "SN3");
    QCOMPARE(light("canbusLamp"), Lamp::Amber);
    QCOMPARE(QDir(m_options.unit.unitDirectory).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({"unit-001", "unit-002", "unit-003"}));
}

void WindowTest::unitWithoutStickRunsNormally()
{
    click("proceed");
    QVERIFY(reach(UnitState::Ended));
    QVERIFY(shows("popupText", "runs normally"));
    QVERIFY(startWithStick());
}

void WindowTest::screenFollowsTheBacklight()
{
    QVERIFY(startWithStick());
    auto *screen = m_window->findChild<bench::ScreenView *>();
    const int day = lightness(screen);
    click("night");
    const int night = lightness(screen);
    QVERIFY2(night < day / 2, qPrintable(QString("%1 by day, %2 by night").arg(day).arg(night)));
    QVERIFY(night > 0);
    click("day");
    QCOMPARE(lightness(screen), day);
}

void WindowTest::droppedThingsThatAreNoFolders()
{
    drop(m_stick + "/production.ini");
    drop(m_folder->filePath("gone"));
    QCoreApplication::processEvents();
    QVERIFY(m_board->state().sticks.isEmpty());
    drop(m_stick);
    drop(m_stick);
    QTRY_COMPARE(m_board->state().sticks.size(), 1);
    QVERIFY(shows("error", "plugged already"));
}

void WindowTest::unitThatCannotBePlaced()
{
    QVERIFY(startWithStick());
    QVERIFY(unplug());
    // A file in the place of the folder for units: no further unit can be made.
    const QString units = m_options.unit.unitDirectory;
    QVERIFY(QDir().rename(units, units + ".old"));
    QFile file(units);
    QVERIFY(file.open(QIODevice::WriteOnly));
    click("proceed");
    QVERIFY(shows("error", units));
    QVERIFY(!m_board->isBusy());

    QVERIFY(file.remove());
    click("proceed");
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), "SN2");
}

void WindowTest::closingEndsTheModule()
{
    QVERIFY(startWithStick());
    m_window->close();
    QVERIFY(m_window->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!m_window->isVisible(), patience);
    QCOMPARE(m_board->state().stage, UnitState::Ended);
}

void WindowTest::programEndsBySignalInMidPass()
{
    QFile stick(m_stick + "/production.ini");
    QVERIFY(stick.open(QIODevice::WriteOnly) && stick.write("[SN]\nmode=1\n") > 0);
    for (int i = 100000; i < 150000; ++i) // enough for the pass to go on for a while
        stick.write(QByteArray::number(i) + '\n');
    stick.close();
    QFile journal(m_folder->filePath("journal"));
    QProcess bench;
    bench.start(program(), {"--window", "--stick", m_stick, "--journal", journal.fileName()});
    QTRY_VERIFY_WITH_TIMEOUT(journal.exists(), patience);
    QVERIFY(journal.open(QIODevice::ReadOnly));
    QByteArray calls;
    QTRY_VERIFY_WITH_TIMEOUT((calls += journal.readAll()).contains("Message"), patience);
    bench.terminate();
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitStatus(), QProcess::NormalExit);
    QCOMPARE(bench.exitCode(), 0);
    calls += journal.readAll();
    QVERIFY2(calls.contains("\"ended\""), calls.constData());
}

void WindowTest::programWithoutScreenSaysSo()
{
    qputenv("QT_QPA_PLATFORM", "none");
    const auto restore = qScopeGuard([] { qputenv("QT_QPA_PLATFORM", "offscreen"); });
    QProcess bench;
    bench.start(program(), {"--window", "--unit", m_folder->filePath("new")});
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitCode(), 1);
    QVERIFY(bench.readAllStandardError().startsWith("There is no screen for the window: set"));
}

void WindowTest::everythingIsReachableAndFits_data()
{
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("English") << QLocale::c();
    QTest::newRow("Chinese") << QLocale(QLocale::Chinese, QLocale::China);
}

void WindowTest::everythingIsReachableAndFits()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    production::loadTranslation("production-bench");
    m_window = std::make_unique<bench::MainWindow>(*m_board);
    m_window->show();
    QVERIFY(startWithStick());

    // A screen of 1366 x 768 at 125 %, less the desktop's own bars.
    const QSize least = m_window->minimumSizeHint();
    QCOMPARE(least, least.boundedTo({1092, 560}));

    QSet<QWidget *> reached;
    for (int i = 0; i < 50; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    for (QPushButton *button : m_window->findChildren<QPushButton *>()) {
        QVERIFY2(reached.contains(button), qPrintable(button->text()));
        QVERIFY2(button->text().contains('&'), qPrintable(button->text()));
        QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
    }
    for (QLabel *label : m_window->findChildren<QLabel *>()) {
        if (label->isVisible() && !label->wordWrap())
            QTRY_VERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
    }
}

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QFont font = QApplication::font();
    font.setPointSize(10); // as desktops have it; the offscreen platform's own is larger
    QApplication::setFont(font);
    WindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_window.moc"
