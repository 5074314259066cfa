// A host application: loads the module, plugs a stick, and expects the unit to come out with a
// serial number that the stick has no longer.
#include "headunit.h"

#include <productioncontrol.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

const int bluetoothSet = 70; // The last step of the pass.
const int timeout = 60000; // ms

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool check(bool passed, const char *what)
{
    if (!passed)
        std::fprintf(stderr, "not so: %s\n", what);
    return passed;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir stick;
    const QString file = stick.filePath(QStringLiteral("production.ini"));
    if (!writeFile(file, "[SN]\nmode=1\nAB01\nAB02\n[BT]\nmode=1\nadv_power=4\n"))
        return EXIT_FAILURE;

    headUnit().sticks.append(stick.path());
    headUnit().onPopUp = [](int code) {
        if (code == bluetoothSet)
            unplugAll();
    };
    ProductionControl *const control = ProductionControl::getInstance();
    QObject::connect(control, &QObject::destroyed, &application, &QCoreApplication::quit);
    QTimer::singleShot(0, reportModulesStarted);
    QTimer::singleShot(timeout, &application, [] { QCoreApplication::exit(EXIT_FAILURE); });
    if (!check(QCoreApplication::exec() == EXIT_SUCCESS, "the module ends when it is unplugged"))
        return EXIT_FAILURE;

    const bool stored =
        check(headUnit().productionData.value(QStringLiteral("SN")) == QStringLiteral("AB01"),
              "the unit stores the serial number");
    const QByteArray pool = readFile(file);
    const bool removed = check(pool.contains("AB02") && !pool.contains("AB01"),
                               "exactly that serial number has left the stick");
    const bool recorded =
        check(readFile(stick.filePath(QStringLiteral("production_done.txt"))) == "AB01\r\n",
              "the stick records the unit");
    return stored && removed && recorded ? EXIT_SUCCESS : EXIT_FAILURE;
}
