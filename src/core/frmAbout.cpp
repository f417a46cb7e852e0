#include "core/frmAbout.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmAbout.h"

#include <QKeyEvent>
#include <QLayout>

namespace sorvanto {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmAbout>()) {
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_ui->picLogo->setPixmap(platform::icon(QStringLiteral("application")).pixmap(64, 64));
    m_ui->lblTitle->setText(platform::applicationTitle());
}

frmAbout::~frmAbout() = default;

void frmAbout::Form_Load() {
    guarded(QStringLiteral("frmAbout:Form_Load"), [&] {
        const auto versions = platform::Recordset::create();
        versions->open(QStringLiteral("SELECT opt_Version FROM Options"), openDB());
        setWindowTitle(translated(QStringLiteral("About ")) + platform::applicationTitle());
        m_ui->lblVersion->setText(translated(QStringLiteral("Version: ")) + programVersion());
        m_ui->lblDBVersion->setText(translated(QStringLiteral("DB Version: "))
                                    + platform::nullText(versions->value(0)));
    });
}

void frmAbout::mouseReleaseEvent(QMouseEvent*) {
    Form_Click();
}

void frmAbout::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        Form_Click();
    else
        QDialog::keyPressEvent(event);
}

void frmAbout::Form_Click() {
    guarded(QStringLiteral("frmAbout:Form_Click"), [&] { close(); });
}

}  // namespace sorvanto
