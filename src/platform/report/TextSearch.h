// Finds a text on the pages of a document, onward from the last place and round again.
#pragma once

#include "platform/report/PageDocument.h"

#include <QRect>
#include <QString>

namespace platform {

class TextSearch {
public:
    struct Place {
        int page = -1;  ///< from 0; -1: nowhere
        int item = -1;
        QRect rect;  ///< of the words, in twips
    };

    explicit TextSearch(const PageDocument& document) : m_document(document) {}

    /// The next place (or the one before) whose shown text holds the words, without regard to case. A new
    /// text starts at the given page.
    Place find(const QString& words, bool backward, int startPage);

private:
    /// Where the words stand in the item; empty when they don't.
    QRect placeOf(const Page& page, const PageItem& item) const;

    const PageDocument& m_document;
    QString m_words;
    Place m_last;
};

}  // namespace platform
