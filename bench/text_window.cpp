// The second baseline of a start: the same window with as much text in it as a screen of the program, in the
// toolkit's own look, so that fonts are found and loaded and texts are shaped.
#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

int main(int argc, char** argv) {
    constexpr int fields = 30;
    QApplication application(argc, argv);
    QMainWindow window;
    for (const char* menu : {"&File", "&Activities", "&Help"})
        window.menuBar()->addMenu(QLatin1String(menu));
    auto* form = new QWidget;
    auto* rows = new QFormLayout(form);
    for (int field = 1; field <= fields; ++field)
        rows->addRow(QStringLiteral("Field %1").arg(field),
                     new QLineEdit(QStringLiteral("Value of field %1").arg(field)));
    window.setCentralWidget(form);
    window.statusBar()->addWidget(new QLabel(QStringLiteral("Formula 1 of 30,000")));
    window.resize(1366, 768);
    window.show();
    return QApplication::exec();
}
