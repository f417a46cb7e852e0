// The manual: its pages in reading order, each in the user's language where it exists and else in English.
// Pages are Markdown files beside README.md; those of another language lie in a folder of its English name.
// Pictures are named "pictures/NAME.png", below a language's folder "../pictures/NAME.png"; those of a language lie in
// pictures/<language in lower case>/ and, in English, in pictures/ itself.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace sorvanto {

/// From a heading to the next one. The first of a page bears its title.
struct ManualSection {
    int level = 1;  ///< of the heading
    QString heading, text;
    QString anchor;  ///< of the English page's heading in this place; links in all languages use it
};

struct ManualPage {
    QString name;      ///< of the file: "labels.md"
    QString language;  ///< in which it is shown: "German", "English"
    QString markdown;
    QString english;  ///< the English page's Markdown, where this one is in another language

    /// Its first heading; the name of a page without one.
    QString title() const;
    /// Taken from the Markdown when first asked for: some milliseconds.
    const std::vector<ManualSection>& sections() const;
    /// Number of the section; 0 for an anchor that the page does not have.
    int sectionOf(const QString& anchor) const;

    mutable std::optional<std::vector<ManualSection>> known{};  ///< the sections, once they were asked for
};

/// A place in the manual: "labels.md", "went-wrong.md#the-strip-below".
struct ManualPlace {
    QString page, anchor;

    static ManualPlace of(const QString& place);
};

class Manual {
public:
    /// folder: of README.md. language: "English", "German"; empty is English. A folder without pages gives none.
    Manual(QString folder, const QString& language);

    const QString& language() const { return m_language; }
    /// README.md first, then the pages in the order in which it and then they themselves link to them.
    const std::vector<ManualPage>& pages() const { return m_pages; }
    /// nullptr where there is none.
    const ManualPage* find(const QString& name) const;
    /// Path of the file that stands for a picture; empty where there is none.
    QString picture(const QString& named) const;

private:
    ManualPage read(const QString& name) const;

    QString m_folder, m_language;
    std::vector<ManualPage> m_pages;
};

/// Where the manual of this program lies: "manual" beside the executable, or as it is installed. Empty where there
/// is none.
QString manualFolder();

/// As the anchors of headings are spelled: "The database can't be opened" is "the-database-cant-be-opened".
QString anchorOf(const QString& heading);

/// The pages that a text in Markdown links to, in its order: "labels.md".
QStringList linkedPages(const QString& markdown);

}  // namespace sorvanto
