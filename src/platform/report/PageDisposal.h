// Lets the pages of a document go a few at a time while the program waits for the user: a thousand at once would hold
// him up.
#pragma once

#include "platform/report/PageDocument.h"

#include <QObject>
#include <QTimer>

namespace platform {

class PageDisposal : public QObject {
public:
    /// Begins at the next turn of the loop, and deletes itself at the end.
    PageDisposal(std::vector<Page> pages, QObject* parent);

    std::size_t left() const { return m_pages.size(); }

private:
    void dropSome();

    std::vector<Page> m_pages;
    QTimer m_turns;
};

}  // namespace platform
