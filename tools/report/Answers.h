// Answers the two dialogs of the reports from the command line, and keeps what the program has to say.
#pragma once

#include "platform/ask/Ask.h"
#include "report/CommandLine.h"

#include <QString>
#include <QStringList>

namespace sorvanto {

class Answers : public platform::Asker {
public:
    /// The order must outlive this object.
    explicit Answers(const Order& order) : m_order(order) {}

    /// Texts of the message boxes so far.
    const QStringList& said() const { return m_said; }

    /// Keeps the text; the answer is the one that changes nothing.
    platform::Answer messageBox(const QString& prompt, platform::BoxStyle style,
                                const QString& title) override;
    QString inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) override {
        return {};
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    /// Fills the dialog's controls and presses its button; any other window goes as if closed by its box.
    void showModal(QObject& window, const std::function<void()>& exec) override;

private:
    const Order& m_order;
    QStringList m_said;
};

}  // namespace sorvanto
