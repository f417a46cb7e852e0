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

using namespace Qt::StringLiterals;

namespace sorvanto {

frmAbout::frmAbout(Context& context, QWidget* parent)
    : QDialog(parent), m_context(context), m_ui(std::make_unique<Ui::frmAbout>()) {
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_ui->picLogo->setPixmap(platform::icon(u"application"_s).pixmap(64, 64));
    m_ui->lblTitle->setText(platform::applicationTitle());
}

frmAbout::~frmAbout() = default;

void frmAbout::Form_Load() {
    guarded(u"frmAbout:Form_Load"_s, [&] {
        const auto versions = platform::Recordset::create();
        versions->open(u"SELECT opt_Version FROM Options"_s, openDB(m_context));
        setWindowTitle(translated(u"About "_s) + platform::applicationTitle());
        m_ui->lblVersion->setText(translated(u"Version: "_s) + programVersion());
        m_ui->lblDBVersion->setText(translated(u"DB Version: "_s) + platform::nullText(versions->value(0)));
    });
}

void frmAbout::mouseReleaseEvent(QMouseEvent*) { Form_Click(); }

void frmAbout::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        Form_Click();
    else
        QDialog::keyPressEvent(event);
}

void frmAbout::Form_Click() {
    guarded(u"frmAbout:Form_Click"_s, [&] { close(); });
}

}  // namespace sorvanto
