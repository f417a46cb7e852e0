// A record screen beside its list: which record is on show, and how a row of the list comes on show.
#include "screens/BrowsingScreen.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::int16_t BrowsingScreen::shownKey() const { return m_empty ? std::int16_t{0} : recordOnView().key; }

SetPlace BrowsingScreen::setPlace() const {
    if (!m_identifiers || !m_identifiers->isOpen())
        return {};
    SetPlace place{0, m_identifiers->recordCount()};
    const std::int64_t row = m_identifiers->position();
    // A key beyond its range is reported where its record is opened.
    if (row >= 0 && row < place.count && identifiers().value(m_records.key).toLongLong() == shownKey())
        place.number = row + 1;
    return place;
}

void BrowsingScreen::showRecord(std::int16_t key) {
    guarded(tag(u"showRecord"_s), [&] {
        if (moveTo(key))
            openCurrent();
        else
            openRecord(key);
        refreshForm();
        setMenuOptions();
    });
}

void BrowsingScreen::rereadRecord() {
    guarded(tag(u"rereadRecord"_s), [&] {
        if (m_locked && !hasTypedText() && shownKey() != 0)
            openRecord(shownKey());
    });
}

// A set that doesn't hold the key stays where it was.
bool BrowsingScreen::moveTo(std::int16_t key) {
    platform::Recordset& set = identifiers();
    const std::int64_t before = set.position();
    set.moveFirst();
    set.find(u"%1 = %2"_s.arg(m_records.key).arg(key));
    if (!set.eof())
        return true;
    if (before >= 0)
        set.setPosition(before);
    return false;
}

bool BrowsingScreen::holds(std::int16_t key) {
    platform::Recordset& set = identifiers();
    if (set.recordCount() == 0)
        return false;
    const std::int64_t before = set.position();
    const bool found = moveTo(key);
    if (found && before >= 0)
        set.setPosition(before);
    return found;
}

}  // namespace sorvanto
