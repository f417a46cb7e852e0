// Every way of a foreign text into the box is led through one place.
#include "platform/widgets/OneLine.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

class OneLineKeeper : public QObject {
public:
    explicit OneLineKeeper(QLineEdit& box) : QObject(&box), m_box(box) { box.installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* box = qobject_cast<QLineEdit*>(watched);  // no box any more while it is taken apart
        if (!box || box->isReadOnly() || !box->isEnabled())
            return false;
        switch (event->type()) {
        case QEvent::KeyPress:
            return static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) &&
                   paste(QClipboard::Clipboard);
        case QEvent::MouseButtonRelease:
            return middleButton(static_cast<QMouseEvent&>(*event));
        case QEvent::ContextMenu:
            return showMenu(static_cast<QContextMenuEvent&>(*event));
        case QEvent::Drop:
            return drop(static_cast<QDropEvent&>(*event));
        default:
            return false;
        }
    }

private:
    /// A text without breaks goes the box's own way.
    bool take(const QString& text) {
        const QString line = onOneLine(text);
        if (line == text)
            return false;
        m_box.insert(line);
        return true;
    }

    bool paste(QClipboard::Mode mode) { return take(QGuiApplication::clipboard()->text(mode)); }

    bool middleButton(const QMouseEvent& event) {
        if (event.button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
            return false;
        const QString text = QGuiApplication::clipboard()->text(QClipboard::Selection);
        if (onOneLine(text) == text)
            return false;
        m_box.setCursorPosition(m_box.cursorPositionAt(event.position().toPoint()));
        return take(text);
    }

    /// Known by its keys: it has a name only where the desktop has a picture for it.
    static QAction* pasteOf(const QMenu& menu) {
        const QString keys = u'\t' + QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
        for (QAction* action : menu.actions())
            if (action->text().endsWith(keys))
                return action;
        return nullptr;
    }

    bool showMenu(const QContextMenuEvent& event) {
        QMenu* menu = m_box.createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        if (QAction* action = pasteOf(*menu)) {
            action->disconnect(&m_box);
            connect(action, &QAction::triggered, this, [this] {
                if (!paste(QClipboard::Clipboard))
                    m_box.paste();
            });
        }
        menu->popup(event.globalPos());
        return true;
    }

    bool drop(QDropEvent& event) {
        if (!event.mimeData() || !event.mimeData()->hasText())
            return false;
        const QString text = event.mimeData()->text();
        if (onOneLine(text) == text)
            return false;
        m_box.setCursorPosition(m_box.cursorPositionAt(event.position().toPoint()));
        take(text);
        event.setDropAction(Qt::CopyAction);
        event.accept();
        return true;
    }

    QLineEdit& m_box;
};

}  // namespace

QString onOneLine(const QString& text) {
    static const QRegularExpression breaks(
        u"\\s*(?:\\r\\n|[\\n\\r\\t\\x{0B}\\x{0C}\\x{85}\\x{2028}\\x{2029}])\\s*"_s);
    if (!text.contains(breaks))
        return text;
    QString line = text;
    return line.replace(breaks, u" "_s).trimmed();
}

void keepOneLine(QLineEdit& box) { new OneLineKeeper(box); }

}  // namespace platform
