// The bench's window, driven by clicks as its users drive it, with the module behind it.

#include "bench/window/board.h"
#include "bench/window/elidedlabel.h"
#include "bench/window/lamp.h"
#include "bench/window/mainwindow.h"
#include "bench/window/popuphistory.h"
#include "bench/window/screenview.h"
#include "bench/window/storedview.h"
#include "translations.h"

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTranslator>
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
    void nextUnitTakesTheNextSerial();
    void unitWithoutStickRunsNormally();
    void troubleStays();
    void screenFollowsTheBacklight();
    void droppedThingsThatAreNoFolders();
    void unitThatCannotBePlaced();
    void closingEndsTheModule();
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
    QString text(const char *label) const { return find<QLabel>(label)->text(); }
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
    m_stick = m_folder->filePath(QStringLiteral("stick"));
    QVERIFY(QDir().mkdir(m_stick));
    QFile file(m_stick + QLatin1String("/production.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(stickContent) > 0 && file.flush());

    m_options = bench::Options();
    m_options.window = true;
    m_options.unit.unitDirectory = m_folder->filePath(QStringLiteral("units"));
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

/// The lines below the pop-up on the unit's screen.
QStringList WindowTest::results() const
{
    QStringList texts;
    const auto labels =
        m_window->findChild<bench::ScreenView *>()->findChildren<bench::ElidedLabel *>();
    for (const bench::ElidedLabel *label : labels)
        texts.append(label->text());
    return texts;
}

QString WindowTest::storedSerial() const
{
    const auto items =
        find<QTreeWidget>("stored")->findItems(QStringLiteral("SN"), Qt::MatchRecursive);
    return items.size() == 1 ? items.first()->text(1) : QString();
}

void WindowTest::wholeUnit()
{
    QVERIFY(startWithStick());
    QVERIFY(text("stage").contains(QLatin1String("In order")));
    QVERIFY(results().contains(QLatin1String("Serial number stored: SN1")));
    QVERIFY(text("stickContent").contains(QLatin1String("SN: 2 left")));
    QVERIFY(text("stickContent").contains(QLatin1String("SK: none left")));
    QCOMPARE(storedSerial(), QStringLiteral("SN1"));
    QCOMPARE(m_board->state().stepTable.value(3), 90);

    auto *lamp = find<Lamp>("canbusLamp");
    auto *keysLamp = find<Lamp>("mcuLamp");
    QCOMPARE(lamp->light(), Lamp::Amber);
    QVERIFY(text("canbusTitle").contains(QLatin1Char('5')));
    click("canbusSeen");
    QTRY_COMPARE(lamp->light(), Lamp::Green);
    QCOMPARE(keysLamp->light(), Lamp::Amber);
    QVERIFY(text("popupText").contains(QLatin1String("the test is passed")));
    click("mcuSeen");
    QTRY_COMPARE(keysLamp->light(), Lamp::Green);

    click("plug");
    QVERIFY(reach(UnitState::Ended));
    QVERIFY(text("popupText").contains(QLatin1String("has exited production mode")));
    QVERIFY(results().contains(QLatin1String("Serial number stored: SN1")));
    QCOMPARE(lamp->light(), Lamp::Green);
    QVERIFY(!find<QPushButton>("canbusSeen")->isEnabled());
    QCOMPARE(find<QTreeWidget>("history")->topLevelItemCount(), m_board->state().popups.size());
}

void WindowTest::nextUnitTakesTheNextSerial()
{
    QVERIFY(startWithStick());
    click("plug");
    QVERIFY(reach(UnitState::Ended));
    click("proceed");
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), QStringLiteral("SN2"));
    QCOMPARE(find<Lamp>("canbusLamp")->light(), Lamp::Amber);

    // With the stick still plugged, one click unplugs it and goes on.
    click("proceed");
    QVERIFY(reach(UnitState::Running));
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), QStringLiteral("SN3"));
    QCOMPARE(QDir(m_options.unit.unitDirectory).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("unit-001"), QStringLiteral("unit-002"),
                          QStringLiteral("unit-003")}));
}

void WindowTest::unitWithoutStickRunsNormally()
{
    click("proceed");
    QVERIFY(reach(UnitState::Ended));
    QVERIFY(text("popupText").contains(QLatin1String("runs normally")));
    QVERIFY(startWithStick());
}

void WindowTest::troubleStays()
{
    QVERIFY(startWithStick());
    click("proceed");
    QVERIFY(reach(UnitState::Running));
    QVERIFY(reach(UnitState::Waiting));
    const QString trouble = QStringLiteral("No SK value available");
    QVERIFY(results().contains(trouble));
    QVERIFY(text("stage").contains(trouble));
    click("canbusSeen");
    QTRY_COMPARE(find<Lamp>("canbusLamp")->light(), Lamp::Green);
    QVERIFY(results().contains(trouble));
}

void WindowTest::screenFollowsTheBacklight()
{
    QVERIFY(startWithStick());
    auto *screen = m_window->findChild<bench::ScreenView *>();
    const int day = lightness(screen);
    click("night");
    const int night = lightness(screen);
    QVERIFY2(night < day / 2,
             qPrintable(QStringLiteral("%1 by day, %2 by night").arg(day).arg(night)));
    QVERIFY(night > 0);
    click("day");
    QCOMPARE(lightness(screen), day);
}

void WindowTest::droppedThingsThatAreNoFolders()
{
    drop(m_stick + QLatin1String("/production.ini"));
    drop(m_folder->filePath(QStringLiteral("gone")));
    QCoreApplication::processEvents();
    QVERIFY(m_board->state().sticks.isEmpty());
    drop(m_stick);
    drop(m_stick);
    QTRY_COMPARE(m_board->state().sticks.size(), 1);
    QVERIFY(text("error").contains(QLatin1String("plugged already")));
}

void WindowTest::unitThatCannotBePlaced()
{
    QVERIFY(startWithStick());
    click("plug");
    QVERIFY(reach(UnitState::Ended));
    // A file in the place of the folder for units: no further unit can be made.
    const QString units = m_options.unit.unitDirectory;
    QVERIFY(QDir().rename(units, units + QLatin1String(".old")));
    QFile file(units);
    QVERIFY(file.open(QIODevice::WriteOnly));
    click("proceed");
    QVERIFY(text("error").contains(units));
    QVERIFY(!m_board->isBusy());

    QVERIFY(file.remove());
    click("proceed");
    QVERIFY(reach(UnitState::Waiting));
    QCOMPARE(storedSerial(), QStringLiteral("SN2"));
}

void WindowTest::closingEndsTheModule()
{
    QVERIFY(startWithStick());
    m_window->close();
    QVERIFY(m_window->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!m_window->isVisible(), patience);
    QCOMPARE(m_board->state().stage, UnitState::Ended);
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
    production::loadTranslation(QStringLiteral("production-bench"));
    m_window = std::make_unique<bench::MainWindow>(*m_board);
    m_window->show();
    QVERIFY(startWithStick());

    // A screen of 1366 x 768 at 125 %, less the desktop's own bars.
    QVERIFY2(m_window->minimumSizeHint().width() <= 1092
                 && m_window->minimumSizeHint().height() <= 560,
             qPrintable(QStringLiteral("%1 x %2")
                            .arg(m_window->minimumSizeHint().width())
                            .arg(m_window->minimumSizeHint().height())));

    QSet<QWidget *> reached;
    for (int i = 0; i < 50; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    const auto buttons = m_window->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        QVERIFY2(reached.contains(button), qPrintable(button->text()));
        QVERIFY2(button->text().contains(QLatin1Char('&')), qPrintable(button->text()));
        QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
    }
    const auto labels = m_window->findChildren<QLabel *>();
    for (QLabel *label : labels) {
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
