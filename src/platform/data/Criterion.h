// What Recordset::find looks for: one field equal to one value.
#pragma once

#include <QString>
#include <QVariant>

namespace platform {

class Criterion {
public:
    /// "LogID = 12", "[log_Lot] = 'AB12'". Throws invalidProcedureCall on anything else.
    explicit Criterion(const QString& text);

    const QString& field() const { return m_field; }
    /// Numbers are compared as numbers, texts without regard to case. NULL equals nothing.
    bool accepts(const QVariant& value) const;

private:
    QString m_field;
    QString m_text;
    double m_number = 0;
    bool m_isNumber = false;
};

}  // namespace platform
