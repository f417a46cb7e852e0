// Print and Export menus, their dialogs, the preview and its file dialog.
#include "Paper.h"

#include "platform/report/PreviewWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

platform::PreviewWindow* previewOnShow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* preview = qobject_cast<platform::PreviewWindow*>(window);
        if (preview && preview->isVisible())
            return preview;
    }
    return nullptr;
}

bool isWholePdf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    return content.startsWith("%PDF-") && content.trimmed().endsWith("%%EOF");
}

/// A field of a date by the arrow keys.
void turn(QDateTimeEdit& box, QDateTimeEdit::Section section, Qt::Key key) {
    box.setFocus();
    box.setSelectedSection(section);
    QTest::keyClick(&box, key);
}

// Its caption changes to "Open" while the list has a folder selected; it stays the same button.
void pressSave(const QWidget& dialog) {
    for (const auto* box : dialog.findChildren<QDialogButtonBox*>()) {
        if (auto* button = box->button(QDialogButtonBox::Save))
            return Visitor::click(*button);
    }
    stopTour("the file dialog has no button to save.");
}

}  // namespace

Paper::Paper(Visitor& visitor, QString pdfFolder, QString programFolder)
    : m_visitor(visitor), m_pdfFolder(std::move(pdfFolder)), m_programFolder(std::move(programFolder)) {}

void Paper::print(const QString& entry, const QString& pdf, const Announce& dialogs) {
    platform::PreviewWindow& shown = preview(entry, dialogs);
    m_visitor.picture(u"preview-"_s + pdf.section('.'_L1, 0, 0), &shown);
    savePdf(shown, pdf);
    close(shown);
}

platform::PreviewWindow& Paper::preview(const QString& entry, const Announce& dialogs) {
    if (dialogs)
        dialogs();
    m_visitor.menu("cmdPrint", entry);
    m_visitor.requireNoReport();
    platform::PreviewWindow* const shown = previewOnShow();
    require(shown, u"no preview came for %1."_s.arg(entry));
    m_visitor.wait(u"the last page of %1"_s.arg(entry), [&] { return shown->isComplete(); });
    return *shown;
}

void Paper::close(platform::PreviewWindow& preview) {
    const QPointer<platform::PreviewWindow> open(&preview);
    Visitor::click(Visitor::find<QWidget>(preview, "closeButton"));
    m_visitor.wait("the end of the preview", [&] { return !open; });
}

void Paper::savePdf(QWidget& preview, const QString& pdf) {
    const QString path = QDir(m_pdfFolder).filePath(pdf);
    QFile::remove(path);
    m_visitor.robot().expectDialog("savePdfDialog", [this, path](QWidget& dialog) {
        pictureOnce("save-as-pdf", dialog);
        Visitor::type(Visitor::find<QLineEdit>(dialog, "fileNameEdit"), path);
        pressSave(dialog);
    });
    Visitor::click(Visitor::find<QWidget>(preview, "savePdfButton"));
    m_visitor.settle();
    m_visitor.wait(path, [&] { return isWholePdf(path); });
    m_files << path;
}

void Paper::exportTo(const QString& entry, const QString& spreadsheet, const Announce& dialogs) {
    const QString path = QDir(m_programFolder).filePath(spreadsheet);
    QFile::remove(path);
    if (dialogs)
        dialogs();
    m_visitor.menu("cmdExport", entry);
    m_visitor.requireNoReport();
    m_visitor.wait(path, [&] { return QFile(path).size() > 0; });
    m_files << path;
}

void Paper::pictureOnce(const QString& name, QWidget& dialog) {
    if (m_pictured.contains(name))
        return;
    m_pictured << name;
    m_visitor.picture(name, &dialog);
}

Paper::Announce Paper::quantity(int quantity) {
    return [this, quantity] {
        m_visitor.robot().expectDialog("frmMake", [this, quantity](QWidget& dialog) {
            Visitor::type(Visitor::find<QWidget>(dialog, "txtQTY"), QString::number(quantity));
            pictureOnce("worksheet-quantity", dialog);
            Visitor::click(Visitor::find<QWidget>(dialog, "OKButton"));
        });
    };
}

Paper::Announce Paper::dates() {
    return [this] {
        m_visitor.robot().expectDialog("frmReportDate", [this](QWidget& dialog) {
            turn(Visitor::find<QDateTimeEdit>(dialog, "dtBegin"), QDateTimeEdit::YearSection, Qt::Key_Down);
            turn(Visitor::find<QDateTimeEdit>(dialog, "dtEnd"), QDateTimeEdit::YearSection, Qt::Key_Up);
            pictureOnce("report-dates", dialog);
            Visitor::click(Visitor::find<QWidget>(dialog, "cmdOK"));
        });
    };
}

Paper::Announce Paper::labels(int count, int position) {
    return [this, count, position] {
        m_visitor.robot().expectDialog("frmSelPrint", [this, count, position](QWidget& dialog) {
            Visitor::type(Visitor::find<QWidget>(dialog, "txtLabels"), QString::number(count));
            pictureOnce("label-positions", dialog);
            Visitor::click(Visitor::find<QWidget>(dialog, u"cmdPosition_%1"_s.arg(position)));
        });
    };
}

}  // namespace tour
