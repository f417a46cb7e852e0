#include "screens/RecipeChanges.h"

#include "history/HistoryBook.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "records/clsLog.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

RecipeChanges::RecipeChanges(const Context& context, QWidget* parent)
    : QPushButton(parent), m_context(context) {
    setObjectName(u"lnkRecipeChanges"_s);
    platform::setLook(*this, "inLine");
    setAutoDefault(false);
    setFlat(true);
    setEnabled(false);
    m_look.setSingleShot(true);
    m_look.callOnTimeout(this, &RecipeChanges::look);
    connect(this, &QPushButton::clicked, this, &RecipeChanges::open);
}

void RecipeChanges::showFor(const clsLog& batch) {
    m_formula = batch.FormulaID;
    m_name = batch.log_Name;
    m_moment = batch.log_Date;
    setText({});
    setEnabled(false);
    setAccessibleName(translated(u"Changes of the formula since the batch"_s));
    m_look.start(0);
}

void RecipeChanges::showEvent(QShowEvent* event) {
    QPushButton::showEvent(event);
    m_look.start(0);
}

/// A formula that has not changed is said as well, but never of a batch that is older than the history.
QString RecipeChanges::textOf(const ChangeCount& changes) {
    if (changes.count == 0)
        return changes.all ? translated(u"Formula unchanged since"_s) : QString();
    return platform::counted(
        changes.all ? translated(u"Formula: %1 change since | Formula: %1 changes since"_s)
                    : translated(u"Formula: at least %1 change since | Formula: at least %1 changes since"_s),
        changes.count);
}

void RecipeChanges::look() {
    if (!isVisible())
        return;
    guarded(u"frmLog:recipeChanges"_s, [&] {
        const auto connection = m_context.connection;
        const bool known = m_formula > 0 && connection && connection->state() == 1;
        const auto changes =
            known ? changesSince(connection->engine(), u"Formula"_s, m_formula, m_moment) : std::nullopt;
        setEnabled(changes && changes->count > 0);
        setText(changes ? textOf(*changes) : QString());
        setAccessibleDescription(text());
    });
}

void RecipeChanges::open() const {
    guarded(u"frmLog:recipeChanges"_s, [&] {
        platform::deref(m_context.window).showHistoryOf(u"Formula"_s, m_formula, m_name, m_moment);
    });
}

}  // namespace sorvanto
