// What was announced lately, newest first, and what can still be done about it.
#pragma once

#include "shared/Happening.h"

#include <QDateTime>
#include <QObject>
#include <deque>

namespace sorvanto {

struct Context;

class News : public QObject {
    Q_OBJECT

public:
    struct Item {
        int id = 0;
        QDateTime when;
        Happening happening;
    };
    static constexpr std::size_t kept = 10;

    /// Hears what is announced for as long as it lives.
    explicit News(Context& context, QObject* parent = nullptr);
    ~News() override;

    const std::deque<Item>& items() const { return m_items; }
    /// nullptr once it is too old.
    const Item* find(int id) const;
    /// Runs an action of it; what fails is reported.
    void act(int id, std::size_t action);

signals:
    /// The newest of the items has just come.
    void heard();
    /// An action was taken away.
    void changed();

private:
    void hear(const Happening& happening);

    Context& m_context;
    std::deque<Item> m_items;
    int m_lastId = 0;
};

}  // namespace sorvanto
