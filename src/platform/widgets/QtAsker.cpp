// Every box belongs to the window in use, so that it is placed on it and never buries it. A box may come before
// the first window of the program.
#include "platform/widgets/QtAsker.h"

#include "platform/widgets/AskDialog.h"
#include "platform/widgets/OwnerWindow.h"

#include <QDir>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace platform {

QtAsker::QtAsker(QWidget* parent) : m_parent(parent) {}

QWidget* QtAsker::owner() const {
    if (QWidget* window = ownerWindow())
        return window;
    return m_parent ? m_parent->window() : nullptr;
}

Answer QtAsker::messageBox(const QString& prompt, BoxStyle style, const QString& title) {
    AskDialog box(prompt, style, title, owner());
    box.exec();
    return box.answer();
}

QString QtAsker::inputBox(const QString& prompt, const QString& title, const QString& preset,
                          const LineGuide& guide) {
    AskDialog box(prompt, title, preset, guide, owner());
    box.exec();
    return box.line();
}

QString QtAsker::openFile(const QString& title, const QString& filter) {
    QFileDialog dialog(owner(), title);
    // Only Qt's own dialog matches name patterns without regard to case on every desktop.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QString label = filter.section(u'|', 0, 0), pattern = filter.section(u'|', 1);
    if (!pattern.isEmpty())
        dialog.setNameFilter(u"%1 (%2)"_s.arg(label, QString(pattern).replace(u';', u' ')));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().first());
}

void QtAsker::showModal(QObject&, const std::function<void()>& exec) { exec(); }

}  // namespace platform
