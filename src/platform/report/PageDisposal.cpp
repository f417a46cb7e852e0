#include "platform/report/PageDisposal.h"

#include "platform/basic/Memory.h"

#include <algorithm>

namespace platform {

namespace {
constexpr std::size_t pagesATurn = 32;  // about a millisecond's worth
}

PageDisposal::PageDisposal(std::vector<Page> pages, QObject* parent)
    : QObject(parent), m_pages(std::move(pages)) {
    connect(&m_turns, &QTimer::timeout, this, &PageDisposal::dropSome);
    m_turns.start(0);
}

// What is left would stay with the library: a thousand pages are 40 MB.
void PageDisposal::dropSome() {
    m_pages.resize(m_pages.size() - std::min(m_pages.size(), pagesATurn));
    if (!m_pages.empty())
        return;
    m_turns.stop();
    m_pages.shrink_to_fit();
    giveBackMemory();
    deleteLater();
}

}  // namespace platform
