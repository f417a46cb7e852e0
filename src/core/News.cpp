#include "core/News.h"

#include "platform/basic/Dates.h"
#include "shared/Context.h"
#include "shared/Guard.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

News::News(Context& context, QObject* parent) : QObject(parent), m_context(context) {
    m_context.announced = [this](const Happening& happening) { hear(happening); };
}

News::~News() { m_context.announced = nullptr; }

void News::hear(const Happening& happening) {
    m_items.push_front({++m_lastId, platform::now(), happening});
    if (m_items.size() > kept)
        m_items.pop_back();
    emit heard();
}

const News::Item* News::find(int id) const {
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [id](const Item& item) { return item.id == id; });
    return found == m_items.end() ? nullptr : &*found;
}

// The action is held while it runs: it may announce so much that its own item goes.
void News::act(int id, std::size_t action) {
    const auto item =
        std::find_if(m_items.begin(), m_items.end(), [id](const Item& each) { return each.id == id; });
    if (item == m_items.end() || action >= item->happening.actions.size())
        return;
    auto& actions = item->happening.actions;
    const HappeningAction chosen = actions[action];
    if (chosen.once) {
        actions.erase(actions.begin() + static_cast<std::ptrdiff_t>(action));
        emit changed();
    }
    guarded(u"News:act"_s, [&] {
        if (chosen.run)
            chosen.run();
    });
}

}  // namespace sorvanto
