// sorvanto-db: makes, checks, copies and restores database files.
#include "db/Commands.h"

#include <QCoreApplication>
#include <csignal>

namespace {

volatile std::sig_atomic_t stopped = 0;

extern "C" void noteStop(int) { stopped = 1; }

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (sorvanto::canBeStopped(arguments)) {  // all others end at once, as ever
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            std::signal(signal, noteStop);
    }
    return sorvanto::runCommand(arguments, out, err, [] { return stopped != 0; });
}
