// A prepared question to one of the files of a trace, and the row that its answer stands at.
#pragma once

#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/FieldKind.h"
#include "platform/data/Query.h"
#include "trace/TracePace.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <set>

namespace sorvanto {

inline platform::Engine& engineOf(const platform::ConnectionPtr& connection) {
    if (!connection || connection->state() == 0)
        throw platform::RuntimeError(platform::error::objectClosed,
                                     QStringLiteral("The connection is closed"));
    return connection->engine();
}

/// A list as one bound value.
inline QString boundList(const QJsonArray& values) {
    return QString::fromUtf8(QJsonDocument(values).toJson(QJsonDocument::Compact));
}

class TraceQuestion {
public:
    TraceQuestion(const platform::ConnectionPtr& connection, TracePace& pace, const QString& sql,
                  const QVariantList& values)
        : m_statement(engineOf(connection), sql, sql), m_pace(pace) {
        bind(values);
    }

    /// The same with other values; it is prepared once for all of them.
    void ask(const QVariantList& values) {
        m_statement.reset();
        bind(values);
    }
    /// Throws TraceEnded as TracePace.
    bool next() {
        m_pace.step();
        return m_statement.step();
    }
    QString text(int column) const {
        return m_statement.value(column, {platform::FieldKind::LongText}).toString();
    }
    double real(int column) const {
        return m_statement.value(column, {platform::FieldKind::Double}).toDouble();
    }
    QDateTime date(int column) const {
        return m_statement.value(column, {platform::FieldKind::Date}).toDateTime();
    }
    std::int64_t key(int column) const { return m_statement.integer(column); }
    QStringList texts() {
        QStringList all;
        while (next())
            all << text(0);
        return all;
    }
    std::set<std::int64_t> keys() {
        std::set<std::int64_t> all;
        while (next())
            all.insert(key(0));
        return all;
    }

private:
    void bind(const QVariantList& values) {
        for (int i = 0; i < values.size(); ++i)
            m_statement.bind(i + 1, values[i]);
    }

    platform::Query m_statement;
    TracePace& m_pace;
};

}  // namespace sorvanto
