// Asks the user with Qt's own windows, in the program's look.
#pragma once

#include "platform/ask/Ask.h"
#include "platform/widgets/Texts.h"

#include <QPointer>
#include <QWidget>

namespace platform {

class QtAsker : public Asker {
public:
    explicit QtAsker(QWidget* parent = nullptr);
    /// The window of boxes that come while none is in use.
    void setParent(QWidget* parent) { m_parent = parent; }
    Answer messageBox(const QString& prompt, BoxStyle style, const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                     const LineGuide& guide) override;
    QString openFile(const QString& title, const QString& filter) override;
    void showModal(QObject& window, const std::function<void()>& exec) override;

private:
    QWidget* owner() const;

    QPointer<QWidget> m_parent;
};

}  // namespace platform
