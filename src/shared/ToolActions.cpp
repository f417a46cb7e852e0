#include "shared/ToolActions.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void ToolActions::onReport(QLatin1String tool, const std::function<void(bool exportIt)>& show) {
    const auto showing = [&show](bool exportIt) {
        return [show, exportIt](const QString&) {
            show(exportIt);
            return true;
        };
    };
    m_actions.insert_or_assign(QString(tool), showing(false));
    m_actions.insert_or_assign(tool + u'x', showing(true));
}

bool ToolActions::run(const QString& tool, const QString& searchText) const {
    const auto found = m_actions.find(tool);
    return found == m_actions.end() || found->second(searchText);
}

void ToolActions::expectOn(const platform::CommandBar& bar) const {
    for (const auto& [tool, act] : m_actions)
        if (!bar.hasTool(tool))
            throw platform::RuntimeError(platform::error::itemNotFound,
                                         u"The command bar has no tool \"%1\""_s.arg(tool));
}

}  // namespace sorvanto
