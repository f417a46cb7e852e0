#include "screens/EditMark.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Engine.h"
#include "shared/Context.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

// A server that does not answer is told by what the user does next.
void EditMark::begin(const QString& table, std::int64_t key) noexcept {
    end();
    try {
        const auto connection = m_context.connection;
        if (key == 0 || !connection || !connection->isServer())
            return;
        const QString name = table + u' ' + QString::number(key);
        if (connection->engine().keepName(name)) {
            m_name = name;
            m_connection = connection;
            return;
        }
        if (const QString who = connection->engine().nameKeeper(name).section(u' ', 0, 0); !who.isEmpty())
            announce(
                Happening{translated(u"%1 is changing this record too"_s).replace(u"%1"_s, who), {}, true});
    } catch (const platform::RuntimeError&) {
    }
}

void EditMark::end() noexcept {
    try {
        const auto connection = m_connection.lock();
        if (!m_name.isEmpty() && connection && connection->state() == 1)
            connection->engine().giveUpName(m_name);
    } catch (const platform::RuntimeError&) {
    }
    m_name.clear();
}

}  // namespace sorvanto
