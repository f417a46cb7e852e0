// The script's queue: comparing what was asked with what was expected.
#include "ScriptedAsker.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using platform::Answer;
using platform::BoxStyle;
using platform::Buttons;
using platform::Icon;

namespace support {
namespace {

QString styleText(const BoxStyle& style) {
    static const QStringList buttons{"Ok", "Yes/No", "Yes/No/Cancel"};
    static const QStringList icons{"no icon", "critical icon", "exclamation icon", "information icon"};
    QString text =
        buttons.at(static_cast<int>(style.buttons)) + ", " + icons.at(static_cast<int>(style.icon));
    if (style.secondIsDefault)
        text += ", second button default";
    if (style.systemModal)
        text += ", system modal";
    return text;
}

bool isWindow(const QObject& window, const QString& name) {
    const QString className = QString::fromLatin1(window.metaObject()->className());
    return window.objectName() == name || className == name || className.endsWith("::" + name);
}

}  // namespace

ScriptedAsker::ScriptedAsker() { platform::setAsker(this); }

ScriptedAsker::~ScriptedAsker() {
    verify();
    platform::setAsker(nullptr);
}

void ScriptedAsker::expectMsgBox(const QString& prompt, Answer answer) {
    expectMsgBox(prompt, BoxStyle{}, answer);
}

void ScriptedAsker::expectMsgBox(const QString& prompt, BoxStyle style, Answer answer) {
    m_script.push_back({Kind::MsgBox, prompt, std::nullopt, style, {}, answer, {}, {}});
}

void ScriptedAsker::expectMsgBox(const QString& prompt, BoxStyle style, const QString& title, Answer answer) {
    m_script.push_back({Kind::MsgBox, prompt, title, style, {}, answer, {}, {}});
}

void ScriptedAsker::expectInputBox(const QString& prompt, const QString& answer,
                                   const std::optional<QString>& title, const QString& preset) {
    m_script.push_back({Kind::InputBox, prompt, title, {}, preset, Answer::Ok, answer, {}});
}

void ScriptedAsker::expectInputBox(const QString& prompt, const QString& answer,
                                   const std::optional<QString>& title,
                                   std::function<void(const platform::LineGuide&)> script) {
    m_script.push_back({Kind::InputBox, prompt, title, {}, {}, Answer::Ok, answer, {}, std::move(script)});
}

void ScriptedAsker::expectFile(const QString& filter, const QString& answer, const QString& title) {
    m_script.push_back({Kind::File, filter, title, {}, {}, Answer::Ok, answer, {}});
}

void ScriptedAsker::expectModal(const QString& window, std::function<void(QWidget&)> script) {
    m_script.push_back({Kind::Modal, window, QString(), {}, {}, Answer::Ok, {}, std::move(script)});
}

void ScriptedAsker::alwaysAnswer(const QString& prompt, Answer answer) {
    m_always.emplace_back(prompt, answer);
}

void ScriptedAsker::verify() {
    for (const Entry& entry : m_script)
        ADD_FAILURE() << "Never asked: " << qPrintable(described(entry)) << "\nAsked were:\n"
                      << qPrintable(m_asked.join('\n'));
    m_script.clear();
}

QString ScriptedAsker::described(const Entry& entry) {
    const QString title = entry.title.value_or(platform::applicationTitle());
    switch (entry.kind) {
    case Kind::MsgBox:
        return u"message box \"%1\" [%2] title \"%3\""_s.arg(entry.text, styleText(entry.style), title);
    case Kind::InputBox:
        return u"input box \"%1\" title \"%2\" preset \"%3\""_s.arg(entry.text, title, entry.preset);
    case Kind::File:
        return u"file \"%1\" title \"%2\""_s.arg(entry.text, title);
    case Kind::Modal:
        return u"window %1"_s.arg(entry.text);
    }
    return {};
}

std::optional<ScriptedAsker::Entry> ScriptedAsker::take(Kind kind, const QString& question) {
    m_asked.push_back(question);
    if (m_script.empty() || m_script.front().kind != kind) {
        ADD_FAILURE() << "Asked unexpectedly: " << qPrintable(question) << "\nThe script has next: "
                      << (m_script.empty() ? "nothing" : qPrintable(described(m_script.front())))
                      << "\nAsked so far:\n"
                      << qPrintable(m_asked.join('\n'));
        return std::nullopt;
    }
    Entry entry = std::move(m_script.front());
    m_script.pop_front();
    return entry;
}

void ScriptedAsker::compare(const Entry& expected, const QString& question, const Entry& actual) const {
    EXPECT_EQ(described(expected).toStdString(), described(actual).toStdString())
        << "Asked was: " << qPrintable(question);
}

Answer ScriptedAsker::messageBox(const QString& prompt, BoxStyle style, const QString& title) {
    m_note = style.note;
    for (const auto& [text, answer] : m_always) {
        if (text == prompt) {
            m_asked.push_back("always: " + prompt);
            return answer;
        }
    }
    const Entry actual{Kind::MsgBox, prompt, title, style, {}, Answer::Ok, {}, {}};
    const auto entry = take(Kind::MsgBox, described(actual));
    if (!entry)
        return style.buttons == Buttons::Ok ? Answer::Ok
                                            : (style.buttons == Buttons::YesNo ? Answer::No : Answer::Cancel);
    compare(*entry, described(actual), actual);
    return entry->answer;
}

QString ScriptedAsker::inputBox(const QString& prompt, const QString& title, const QString& preset,
                                const platform::LineGuide& guide) {
    const Entry actual{Kind::InputBox, prompt, title, {}, preset, Answer::Ok, {}, {}};
    const auto entry = take(Kind::InputBox, described(actual));
    if (!entry)
        return {};
    compare(*entry, described(actual), actual);
    if (entry->lineScript)
        entry->lineScript(guide);
    return entry->reply;
}

QString ScriptedAsker::openFile(const QString& title, const QString& filter) {
    const Entry actual{Kind::File, filter, title, {}, {}, Answer::Ok, {}, {}};
    const auto entry = take(Kind::File, described(actual));
    if (!entry)
        return {};
    compare(*entry, described(actual), actual);
    return entry->reply;
}

void ScriptedAsker::showModal(QObject& window, const std::function<void()>&) {
    const QString name = window.objectName().isEmpty() ? QString::fromLatin1(window.metaObject()->className())
                                                       : window.objectName();
    const auto entry = take(Kind::Modal, "window " + name);
    if (!entry)
        return;
    auto* widget = qobject_cast<QWidget*>(&window);
    if (!widget || !isWindow(window, entry->text)) {
        ADD_FAILURE() << "Expected was window " << qPrintable(entry->text) << ", shown was "
                      << qPrintable(name);
        return;
    }
    drive(*widget, *entry);
}

void ScriptedAsker::drive(QWidget& window, const Entry& entry) {
    window.show();
    QCoreApplication::processEvents();
    if (entry.script)
        entry.script(window);
    QCoreApplication::processEvents();
    if (window.isVisible()) {
        ADD_FAILURE() << "The script left window " << qPrintable(entry.text) << " open.";
        window.hide();
    }
}

}  // namespace support
