// One table a record: which field stands in which box under which label, by which rule. Showing, reading,
// checking and translating follow it, in its order. Locking does not: it goes by the controls' names.
#pragma once

#include "platform/basic/Currency.h"
#include "shared/Context.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <initializer_list>
#include <variant>
#include <vector>

class QLabel;
class QWidget;

namespace sorvanto {

using FieldValue = std::variant<QString, std::int16_t, platform::Currency, QDateTime>;

struct FieldRule {
    /// Never read back.
    bool shownOnly = false;
    /// English message when the text is empty, or the number not above 0.
    const char* required = nullptr;
    /// English text of a choice that is still to be made; while it shows, the record keeps its own.
    const char* prompt = nullptr;
    /// The field is a code, shown as the entry of this table of the context and never read back.
    QStringList Context::*entries = nullptr;
};
inline constexpr FieldRule shownOnly{.shownOnly = true};

/// The controls of the table, found by their names.
class FieldBoxes {
public:
    explicit FieldBoxes(const Context& context) : m_context(context) {}

    /// A label with its English text, beside a box that the table does not fill. Throws itemNotFound, as all
    /// that looks for a control.
    void addLabels(const QWidget& form, std::initializer_list<std::pair<const char*, const char*>> labels);
    void translate() const;
    /// False with the first box whose number or date can't be read brought up, its hint shown: such a one is
    /// never guessed.
    bool readable() const;
    /// Readable, and nothing required is missing; a message tells what is.
    bool complete() const;

protected:
    struct Field {
        QWidget* box;
        FieldRule rule;
    };

    void addLabel(const QWidget& form, const char* label, const char* caption);
    const Field& addField(QWidget& form, const char* box, const FieldRule& rule);
    void show(const Field& field, const FieldValue& value) const;
    static bool isRead(const Field& field) { return !field.rule.shownOnly && !field.rule.entries; }
    static FieldValue read(const Field& field, const FieldValue& stored);

    std::vector<Field> m_fields;

private:
    struct Label {
        QLabel* label;
        const char* caption;
    };
    const Context& m_context;
    std::vector<Label> m_labels;
};

template <class Record>
class RecordFields : public FieldBoxes {
public:
    struct Row {
        std::variant<QString Record::*, std::int16_t Record::*, platform::Currency Record::*,
                     QDateTime Record::*>
            value;
        const char* box;
        const char* label;
        const char* caption;  ///< English
        FieldRule rule{};
    };

    /// Money is shown with the currency of the options.
    RecordFields(const Context& context, QWidget& form, std::vector<Row> rows)
        : FieldBoxes(context), m_rows(std::move(rows)) {
        for (const Row& row : m_rows) {
            addField(form, row.box, row.rule);
            addLabel(form, row.label, row.caption);
        }
    }
    void show(const Record& record) const {
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            std::visit([&](auto value) { FieldBoxes::show(m_fields[i], record.*value); }, m_rows[i].value);
    }
    /// The boxes are readable.
    void read(Record& record) const {
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            if (isRead(m_fields[i]))
                std::visit([&](auto value) { take(m_fields[i], record.*value); }, m_rows[i].value);
        }
    }

private:
    template <class Value>
    static void take(const Field& field, Value& value) {
        value = std::get<Value>(FieldBoxes::read(field, value));
    }

    std::vector<Row> m_rows;
};

}  // namespace sorvanto
