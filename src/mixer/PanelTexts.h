// Everything the mixer panel says, in the user's language.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>

namespace sorvanto {

/// One name for each text; PanelTexts.inc has them with their English texts.
enum class PanelText {
#define PANEL_TEXT(name, english) name,
#include "mixer/PanelTexts.inc"
#undef PANEL_TEXT
    Count
};

/// A text with its variable parts.
struct PanelMessage {
    PanelText text = PanelText::Count;  ///< Count: nothing to say
    QStringList parts;
    bool empty() const { return text == PanelText::Count; }
    bool operator==(const PanelMessage&) const = default;
};

/// The pattern with %1, %2 ... filled in; a part is never searched for marks itself.
QString filledIn(const QString& pattern, const QStringList& parts);

class PanelTexts {
public:
    /// English in, the user's language out; empty where there is none.
    using Source = std::function<QString(const QString& english)>;

    /// In the place of a file: what somebody else has read of it.
    void setSource(Source source) { m_source = std::move(source); }
    bool hasSource() const { return m_source != nullptr; }
    /// Reads the language file. A missing or broken file, a key without translation: English. The file is
    /// never written.
    void load(const QString& path);

    QString operator()(PanelText text) const;
    /// With %1, %2 ... filled in; a part is never searched for marks itself.
    QString operator()(PanelText text, const QStringList& parts) const;
    QString operator()(const PanelMessage& message) const;
    /// Of a name that has no place of its own here, such as a mix type's.
    QString shown(const QString& english) const;

    /// All English texts, which are the keys in the language files.
    static QStringList keys();

private:
    QHash<QString, QString> m_translated;
    Source m_source;
};

}  // namespace sorvanto
