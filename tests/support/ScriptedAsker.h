// Answers the program's questions from a script. Each entry states what must be asked, in order; anything
// else, and any entry left over, fails the test. Nothing ever waits for a user.
//   ScriptedAsker asker;
//   asker.expectMsgBox("Delete this formula?", platform::deletionStyle, platform::Answer::Yes);
//   asker.expectModal("frmMake", [](QWidget& form) { QTest::mouseClick(child<QPushButton>(form, "cmdOK"), ...); });
#pragma once

#include "platform/ask/Ask.h"

#include <QString>
#include <QStringList>
#include <QWidget>
#include <deque>
#include <functional>
#include <optional>

namespace support {

class ScriptedAsker : public platform::Asker {
public:
    /// Puts itself in the asker's place for its lifetime.
    ScriptedAsker();
    /// Fails the test on left-over entries.
    ~ScriptedAsker() override;
    ScriptedAsker(const ScriptedAsker&) = delete;
    ScriptedAsker& operator=(const ScriptedAsker&) = delete;

    /// Without a title the application's title is required; an empty title means that none may be shown.
    void expectMsgBox(const QString& prompt, platform::Answer answer = platform::Answer::Ok);
    void expectMsgBox(const QString& prompt, platform::BoxStyle style,
                      platform::Answer answer = platform::Answer::Ok);
    void expectMsgBox(const QString& prompt, platform::BoxStyle style, const QString& title,
                      platform::Answer answer = platform::Answer::Ok);
    /// An empty answer is Cancel. Without a title the application's title is required.
    void expectInputBox(const QString& prompt, const QString& answer,
                        const std::optional<QString>& title = std::nullopt, const QString& preset = {});
    /// As above; the script gets what accompanies the line while it is open.
    void expectInputBox(const QString& prompt, const QString& answer, const std::optional<QString>& title,
                        std::function<void(const platform::LineGuide&)> script);
    /// An empty answer is Cancel.
    void expectFile(const QString& filter, const QString& answer, const QString& title = {});
    /// A modal window by its object name or its class name (without namespace). It is shown, the script runs
    /// with it, and it must have hidden it.
    void expectModal(const QString& window, std::function<void(QWidget&)> script);
    /// The same box as often as it comes, any number of times, wherever it comes; never left over.
    void alwaysAnswer(const QString& prompt, platform::Answer answer = platform::Answer::Ok);

    /// Fails the test when entries are left over; forgets them.
    void verify();
    /// The quiet line of the message box asked last.
    const QString& note() const { return m_note; }
    /// Everything asked so far, one line each.
    const QStringList& asked() const { return m_asked; }

    platform::Answer messageBox(const QString& prompt, platform::BoxStyle style,
                                const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                     const platform::LineGuide& guide) override;
    QString openFile(const QString& title, const QString& filter) override;
    void showModal(QObject& window, const std::function<void()>& exec) override;

private:
    enum class Kind { MsgBox, InputBox, File, Modal };
    struct Entry {
        Kind kind;
        QString text;  ///< prompt, filter or window
        std::optional<QString> title;
        platform::BoxStyle style;
        QString preset;
        platform::Answer answer = platform::Answer::Ok;
        QString reply;
        std::function<void(QWidget&)> script;
        std::function<void(const platform::LineGuide&)> lineScript{};
    };

    static QString described(const Entry& entry);
    std::optional<Entry> take(Kind kind, const QString& question);
    void compare(const Entry& expected, const QString& question, const Entry& actual) const;
    void drive(QWidget& window, const Entry& entry);

    std::deque<Entry> m_script;
    std::vector<std::pair<QString, platform::Answer>> m_always;
    QStringList m_asked;
    QString m_note;
};

}  // namespace support
