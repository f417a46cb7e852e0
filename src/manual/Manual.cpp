#include "manual/Manual.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr qint64 largestPage = 1'000'000;  // bytes
const QString firstPage = u"README.md"_s;
const QString english = u"English"_s;

/// Empty where it can't be read.
QString textOf(const QString& path) {
    try {
        return QString::fromUtf8(platform::readFile(path, largestPage));
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

std::vector<ManualSection> sectionsOf(const QString& markdown) {
    QTextDocument document;
    document.setMarkdown(markdown);
    std::vector<ManualSection> sections;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        const QString text = block.text().remove(QChar::ObjectReplacementCharacter).simplified();
        if (level > 0)
            sections.push_back({level, text, {}, anchorOf(text)});
        else if (!sections.empty() && !text.isEmpty())
            sections.back().text += (sections.back().text.isEmpty() ? QString() : u"\n"_s) + text;
    }
    return sections;
}

}  // namespace

QString ManualPage::title() const {
    static const QRegularExpression heading(u"^#+ .*$"_s, QRegularExpression::MultilineOption);
    const std::vector<ManualSection> first = sectionsOf(heading.match(markdown).captured());
    return first.empty() ? name : first.front().heading;
}

// Headings stand in the same order in each language, so that an anchor leads to the same place in all of them.
const std::vector<ManualSection>& ManualPage::sections() const {
    if (known)
        return *known;
    known = sectionsOf(markdown);
    if (!english.isEmpty()) {
        const std::vector<ManualSection> anchors = sectionsOf(english);
        for (std::size_t i = 0; i < std::min(known->size(), anchors.size()); ++i)
            (*known)[i].anchor = anchors[i].anchor;
    }
    return *known;
}

int ManualPage::sectionOf(const QString& anchor) const {
    for (std::size_t i = 0; i < sections().size(); ++i) {
        if (sections()[i].anchor == anchor)
            return static_cast<int>(i);
    }
    return 0;
}

ManualPlace ManualPlace::of(const QString& place) {
    return {place.section('#'_L1, 0, 0), place.section('#'_L1, 1)};
}

QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == '-'_L1 || c == '_'_L1)
            anchor += c;
        else if (c == ' '_L1)
            anchor += '-'_L1;
    }
    return anchor;
}

QStringList linkedPages(const QString& markdown) {
    static const QRegularExpression link(uR"(\]\(([\w-]+\.md)(?:#[^)]*)?\))"_s);
    QStringList pages;
    for (auto all = link.globalMatch(markdown); all.hasNext();)
        pages << all.next().captured(1);
    return pages;
}

Manual::Manual(QString folder, const QString& language)
    : m_folder(std::move(folder)), m_language(language.isEmpty() ? english : language) {
    QStringList names = m_folder.isEmpty() ? QStringList() : QStringList{firstPage};
    for (qsizetype next = 0; next < names.size(); ++next) {
        const QString original = textOf(QDir(m_folder).filePath(names[next]));
        if (original.isEmpty())
            continue;
        m_pages.push_back(read(names[next]));
        for (const QString& linked : linkedPages(original)) {
            if (!names.contains(linked))
                names << linked;
        }
    }
}

ManualPage Manual::read(const QString& name) const {
    const QString original = textOf(QDir(m_folder).filePath(name));
    const QString own =
        m_language == english ? QString() : textOf(QDir(m_folder).filePath(m_language + '/'_L1 + name));
    return own.isEmpty() ? ManualPage{name, english, original, {}}
                         : ManualPage{name, m_language, own, original};
}

const ManualPage* Manual::find(const QString& name) const {
    const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                    [&](const ManualPage& page) { return page.name == name; });
    return found == m_pages.end() ? nullptr : &*found;
}

QString Manual::picture(const QString& named) const {
    const QString file = QFileInfo(named).fileName();
    for (const QString& folder : {m_language.toLower() + '/'_L1, QString()}) {
        const QString path = QDir(m_folder).filePath(u"pictures/"_s + folder + file);
        if (!file.isEmpty() && QFileInfo(path).isFile())
            return path;
    }
    return {};
}

QString manualFolder() {
    const QDir executable(QCoreApplication::applicationDirPath());
    for (const QString& place : {u"manual"_s, QStringLiteral(SORVANTO_MANUAL_FROM_EXECUTABLE)}) {
        const QString folder = QDir::cleanPath(executable.filePath(place));
        if (QFileInfo::exists(folder + '/'_L1 + firstPage))
            return folder;
    }
    return {};
}

}  // namespace sorvanto
