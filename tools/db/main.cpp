// sorvanto-db: makes, checks, copies and restores database files.
#include "db/Commands.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return sorvanto::runCommand(application.arguments().mid(1), out, err);
}
