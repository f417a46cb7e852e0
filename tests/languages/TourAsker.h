// Answers whatever the program asks on a tour, after showing the window in which a user would be asked.
#pragma once

#include "platform/ask/Ask.h"

#include <QMap>
#include <QWidget>
#include <functional>

namespace languages {

class TourAsker : public platform::Asker {
public:
    /// Gets each window while it is on show, with a name for it.
    std::function<void(QWidget& window, const QString& name)> look;
    /// The answer to the next boxes that offer more than OK.
    platform::Answer answer = platform::Answer::Yes;
    /// What is typed into the next input boxes, one after the other; then they are cancelled.
    QStringList lines;
    /// What a user does in a dialog of that object name before it is closed.
    QMap<QString, std::function<void(QWidget&)>> scripts;

    platform::Answer messageBox(const QString& prompt, platform::BoxStyle style,
                                const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                     const platform::LineGuide& guide) override;
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject& window, const std::function<void()>& exec) override;

private:
    void show(QWidget& window, const QString& name);

    int m_boxes = 0;
};

}  // namespace languages
