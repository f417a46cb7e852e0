// Which row does the user mean? None shows a message, one is taken, several are put before the user
// in a list shaped from the result set. The key is the set's first column.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>
#include <QVariant>
#include <cstdint>

namespace sorvanto {

using namespace Qt::StringLiterals;

class clsSearch {
public:
    /// X, Y in twips, 0 centres. The key, 0 when nothing was chosen.
    std::int32_t searchList(const platform::RecordsetPtr& rows, std::int32_t X, std::int32_t Y);
    QVariant ID() const { return m_id; }
    bool Succeed() const { return m_succeed; }
    void FormCaption(const QString& caption) { m_formCaption = caption; }

private:
    QVariant m_id;
    bool m_succeed = false;
    QString m_formCaption = u"Search Records"_s;
};

/// The shared search of basMain, created on first use.
clsSearch& sharedSearch();

}  // namespace sorvanto
