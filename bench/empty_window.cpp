// The baseline of a start: an application and an empty main window of the same size.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1366, 768);
    window.show();
    return QApplication::exec();
}
