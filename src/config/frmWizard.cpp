// Eight buttons, each language in its own tongue; nothing is translated, as no language is known yet.
#include "config/frmWizard.h"

#include "config/LanguageHelp.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "ui_frmWizard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

frmWizard::frmWizard(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmWizard>()) {
    m_ui->setupUi(this);
    m_ui->imgLogo->setPixmap(platform::applicationIcon().pixmap(40, 40));
    for (std::int16_t index = 0; index < 8; ++index) {
        auto* option = findChild<QPushButton*>(u"optLanguage_%1"_s.arg(index));
        option->setToolTip(languageHelp[static_cast<std::size_t>(index)]);
        option->setAccessibleDescription(option->toolTip());
        connect(option, &QPushButton::clicked, this, [this, index] { optLanguage_Click(index); });
    }
}

frmWizard::~frmWizard() = default;

void frmWizard::optLanguage_Click(std::int16_t index) {
    guarded(u"frmWizard:optLanguage_Click"_s, [&] {
        Language(index);
        hide();
    });
}

}  // namespace sorvanto
