// Renders the main states of the bench's window: screenshots FOLDER PREFIX. Run by
// scripts/screenshots.sh, which looks after language, scale and platform.

#include "board.h"
#include "mainwindow.h"
#include "translations.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

using bench::Board;
using bench::MainWindow;
using bench::UnitState;

namespace {

constexpr int patience = 30000; // ms
constexpr int smallest = 0; // what Qt calls the quality of a PNG is how little it is packed
constexpr int settling = 200; // ms; until every layout has found its place

const char stickContent[] = R"([FactorySettings]
mode=1
reverse_camera=1
steering_wheel=left

[Panel]
mode=1
size=10.1
vcom=120
avdd=96
backlight_steps=6,14,26,42,62,86,114,146,182,220,255
backlight_day=214
backlight_night=70
driver=quillvarent_10inc.ko

[SN]
mode=1
length=8
startwith="SN"
SN260417
SN260418
SN260419

[SK]
mode=1
K7Q2-9PLD

[CANBUS]
mode=1
id=5

[DirectionKey]
mode=1

[BT]
mode=1
adv_power=4
)";

/// Keeps the program going until @p condition is true, or @p limit ms are over.
template <typename Condition>
bool waitFor(Condition condition, int limit)
{
    const QDeadlineTimer deadline(limit);
    while (!condition() && !deadline.hasExpired()) {
        QEventLoop loop; // processEvents() alone would carry out no deferred deletion
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return condition();
}

/// Drives a window and stores what it looks like.
class Camera
{
public:
    Camera(QString folder, QString prefix, Board &board)
        : m_folder(std::move(folder))
        , m_prefix(std::move(prefix))
        , m_board(board)
        , m_window(board)
    {
        m_window.show();
    }

    bool reach(UnitState::Stage stage)
    {
        return waitFor([&] { return m_board.state().stage == stage; }, patience);
    }

    void click(const char *name)
    {
        auto *button = m_window.findChild<QAbstractButton *>(QLatin1String(name));
        button->setFocus();
        button->click();
    }

    bool take(const char *state)
    {
        waitFor([] { return false; }, settling);
        const QString path =
            QStringLiteral("%1/%2-%3.png").arg(m_folder, m_prefix, QLatin1String(state));
        const QImage image = m_window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        return image.save(path, "PNG", smallest);
    }

private:
    const QString m_folder;
    const QString m_prefix;
    Board &m_board;
    MainWindow m_window;
};

/// From the first unit to the second, for which a pool is empty.
bool takeAll(Camera &camera, Board &board, const QString &stick)
{
    bool done = camera.take("off");
    board.plug(stick);
    camera.click("proceed");
    done = done && camera.reach(UnitState::Waiting);
    camera.click("canbusSeen");
    done = done && camera.take("done");
    camera.click("night");
    done = done && camera.take("night");
    camera.click("day");
    camera.click("plug");
    done = done && camera.reach(UnitState::Ended) && camera.take("ended");
    camera.click("proceed");
    done = done && camera.reach(UnitState::Waiting) && camera.take("trouble");
    board.quit();
    return done && camera.reach(UnitState::Ended);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QFont font = QApplication::font();
    font.setPointSize(10); // as desktops have it; the offscreen platform's own is larger
    QApplication::setFont(font);
    for (const char *texts : {"qt", "production", "production-bench"})
        production::loadTranslation(QLatin1String(texts));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        qFatal("usage: screenshots FOLDER PREFIX");

    QTemporaryDir folder(QDir::tempPath() + QLatin1String("/bench-XXXXXX"));
    const QString stick = folder.filePath(QStringLiteral("line-7"));
    QDir().mkpath(stick);
    QFile file(stick + QLatin1String("/production.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(stickContent) < 0 || !file.flush())
        qFatal("no stick");

    // Also binds the program to the bench's platform, whose system() it must find first.
    if (bench::HeadUnit::exists())
        qFatal("there is a unit already");
    bench::Options options;
    options.window = true;
    Board board(options);
    QString error;
    if (!board.open(&error))
        qFatal("%s", qUtf8Printable(error));
    Camera camera(arguments.at(1), arguments.at(2), board);
    return takeAll(camera, board, stick) ? 0 : 1;
}
