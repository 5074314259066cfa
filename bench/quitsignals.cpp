#include "quitsignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace bench {

namespace {

int pipeEnds[2] = {-1, -1};

/// signal-safety(7): write() is among the little that a handler may call.
void onSignal(int)
{
    const ssize_t ignored = ::write(pipeEnds[1], "", 1);
    Q_UNUSED(ignored)
}

} // namespace

QuitSignals::QuitSignals(QObject *parent)
    : QObject(parent)
{
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the process then ends as it would without this
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char signal = 0;
        if (::read(pipeEnds[0], &signal, 1) == 1)
            emit received();
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = int(SA_RESETHAND) | SA_RESTART;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(number, &action, nullptr);
}

} // namespace bench
