// How the dialect is written for the server.
#pragma once

#include "platform/data/Dialect.h"
#include "platform/data/postgres/Catalogue.h"

#include <QHash>

namespace platform::postgres {

class ServerWords : public EngineWords {
public:
    /// Has to stay.
    explicit ServerWords(const Catalogue& catalogue) : m_catalogue(catalogue) {}

    void setLastKey(std::int64_t key) { m_lastKey = key; }
    /// The alias that was too long for the server, by what was sent in its place; anything else as it is.
    QString restored(const QString& name) const { return m_longNames.value(name, name); }

    QString lastKey() const override;
    QString rowKey(const QString& table) const override;
    QString name(const QString& name, bool bare) const override;
    bool knowsColumn(const QString& name) const override { return !m_catalogue.spelled(name).isEmpty(); }
    QString alias(const QString& name, bool bare) const override;
    QString nullsPlace(bool descending) const override;
    Around truthAsValue() const override;
    bool columnIsCondition() const override { return false; }
    Around textAlone() const override;
    QString numberForText(const QString& number) const override;
    Around valueFor(const QString& declaredType) const override;
    QString operatorFunction(const QString& sign) const override;
    Around operatorValue(const QString& sign) const override;
    QString function(const QString& name) const override;
    std::pair<QString, QString> like(const QString& pattern, bool negated) const override;
    Around likeText() const override;
    QString hex(const QString& bytes) const override;
    QString literalOf(const QString& column, const QString& declaredType) const override;
    QString clock(const QString& moment, const QString& minutesAhead) const override;
    QString listedNumbers(const QString& place) const override;
    QString listedTexts(const QString& place) const override;
    QString listedTriples(const QString& place) const override;

private:
    const Catalogue& m_catalogue;
    mutable QHash<QString, QString> m_longNames;
    std::int64_t m_lastKey = 0;
};

}  // namespace platform::postgres
