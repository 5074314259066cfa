#include "plugin.h"

#include "board.h"
#include "mainwindow.h"

#include <QApplication>

#include <cstdio>

namespace bench {

std::unique_ptr<QCoreApplication> WindowPlugin::makeApplication(int &argc, char **argv) const
{
    return std::make_unique<QApplication>(argc, argv);
}

int WindowPlugin::run(const Options &options)
{
    Board board(options);
    QString error;
    if (!board.open(&error)) {
        fprintf(stderr, "%s\n", qUtf8Printable(error));
        return Unusable;
    }
    MainWindow window(board);
    window.show();
    return QApplication::exec();
}

void WindowPlugin::close()
{
    QApplication::closeAllWindows();
}

} // namespace bench
