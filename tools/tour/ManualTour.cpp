// Goes by names of controls alone, so that it is the same in each language.
#include "ManualTour.h"

#include "Program.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/RecordList.h"
#include "shared/Translator.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <memory>

namespace tour {
namespace {

constexpr QSize smallWindow(1366, 749), wideWindow(1920, 1060);  // a screen without its title bar

class ManualTour {
public:
    ManualTour(const QString& folder, const QString& pictures)
        : m_folder(folder), m_visitor(pictures, {}), m_program(m_visitor, folder) {
        m_visitor.nameAlone();
    }
    void run(int language);

private:
    void startForTheFirstTime(int language);
    void resize(QSize size);
    void formulas();
    void history();
    void records();
    void trace();
    void unsavedText();
    void delivery();
    void problems();
    void health();
    /// Opens a window by its keys, takes its picture, and closes it by that button.
    void window(Qt::Key number, const QString& name, const QString& picture);

    QString m_folder;
    Visitor m_visitor;
    Program m_program;
};

void ManualTour::startForTheFirstTime(int language) {
    m_program.start(language, [this](QWidget& question) {
        m_visitor.picture(u"start-first"_s, &question);
        Visitor::click(Visitor::find<QAbstractButton>(question, u"cmdSample"_s));
    });
    resize(smallWindow);
    const auto* copy = m_visitor.window().findChild<QLabel*>(u"lblCopy"_s);
    m_visitor.wait(u"the copy of today"_s, [&] {
        return copy && !copy->text().isEmpty() &&
               !copy->text().contains(sorvanto::translated(u"No copy yet"_s));
    });
}

void ManualTour::resize(QSize size) {
    m_visitor.window().showNormal();
    m_visitor.wait(u"the size of the window"_s, [&] {
        m_visitor.window().resize(size);
        QCoreApplication::processEvents();
        return m_visitor.window().size() == size;
    });
}

void ManualTour::formulas() {
    m_visitor.tool(u"cmdFormulas"_s);
    m_visitor.robot().expectDialog(u"frmSearchRS"_s, [this](QWidget& list) {
        Visitor::find<platform::RecordGrid>(list, u"TDBList1"_s).selectRow(0);
        m_visitor.picture(u"search-list"_s, &list);
        Visitor::click(Visitor::find<QAbstractButton>(list, u"cmdOK"_s));
    });
    m_visitor.search(u"Hydro"_s);
    m_visitor.openTab(2);
    m_visitor.picture(u"formula-mix-options"_s);
    m_visitor.openTab(0);
}

void ManualTour::window(Qt::Key number, const QString& name, const QString& picture) {
    m_visitor.robot().expectDialog(name, [this, picture](QWidget& shown) {
        m_visitor.picture(picture, &shown);
        Visitor::click(Visitor::find<QAbstractButton>(shown, u"cmdClose"_s));
    });
    QTest::keyClick(&m_visitor.window(), number, Qt::ControlModifier);
    m_visitor.settle();
}

/// Two people's changes would need two users; these are two of one.
void ManualTour::history() {
    const std::pair<const char*, const char*> changes[] = {
        {"txtfrm_Desc", "Topical corticosteroid"},
        {"txtfrm_Strength", "10 mg/g"},
        {"txtfrm_Desc", "Corticosteroid in vanishing base"}};
    for (const auto& [box, text] : changes) {
        m_visitor.tool(u"cmdEdit"_s);
        m_visitor.type(QLatin1String(box), QLatin1String(text));
        m_visitor.tool(u"cmdSave"_s);
    }
    window(Qt::Key_7, u"HistoryWindow"_s, u"history"_s);
}

void ManualTour::records() {
    m_visitor.tool(u"cmdLogs"_s);
    resize(wideWindow);
    const auto& list = m_visitor.find<platform::RecordList>(u"recordList"_s);
    m_visitor.wait(u"the list of batches"_s, [&] { return list.model().rowCount() > 5; });
    m_visitor.picture(u"record-list"_s);
    resize(smallWindow);
}

/// From the ingredient on show.
void ManualTour::trace() {
    m_visitor.tool(u"cmdChemicals"_s);
    if (m_visitor.find<QAbstractButton>(u"cmdCancel"_s).isEnabled())
        m_visitor.tool(u"cmdCancel"_s);
    window(Qt::Key_6, u"TraceWindow"_s, u"where-did-it-go"_s);
}

void ManualTour::unsavedText() {
    m_visitor.tool(u"cmdEdit"_s);
    m_visitor.type(u"txtchm_Notes"_s, u"Sieve it through no. 60 before weighing."_s);
    m_visitor.tool(u"cmdChemicals"_s);
    m_visitor.find<QWidget>(u"draftStrip"_s);
    m_visitor.type(u"txtchm_Notes"_s, u"New drum opened."_s);  // for the dot
    m_visitor.picture(u"unsaved-text"_s);
    m_visitor.click(u"cmdDiscard"_s);
    m_visitor.settle();
    m_visitor.tool(u"cmdCancel"_s);
}

/// A lot that comes again, and what the formulas that take it cost then.
void ManualTour::delivery() {
    m_visitor.robot().expectDialog(u"NewLotWindow"_s, [this](QWidget& shown) {
        const std::pair<const char*, const char*> invoice[] = {{"txtLot", "HC26031"},
                                                               {"txtPackPrice", "77.50"},
                                                               {"txtPackSize", "25"},
                                                               {"txtPackUnit", "g"},
                                                               {"txtAWP", "7.50"}};
        for (const auto& [box, text] : invoice)
            Visitor::type(Visitor::find<QLineEdit>(shown, QLatin1String(box)), QLatin1String(text));
        m_visitor.picture(u"new-lot"_s, &shown);
        Visitor::click(Visitor::find<QAbstractButton>(shown, u"cmdAdd"_s));
    });
    m_visitor.tool(u"cmdNewLot"_s);
    m_visitor.robot().expectDialog(u"RepricingWindow"_s, [this](QWidget& shown) {
        m_visitor.picture(u"recalculate"_s, &shown);
        Visitor::click(Visitor::find<QAbstractButton>(shown, u"cmdClose"_s));
    });
    m_visitor.click(u"cmdNewsAction0"_s);
    m_visitor.settle();
}

/// A search that can't be made, and a save of nothing.
void ManualTour::problems() {
    m_visitor.tool(u"cmdFormulas"_s);
    m_visitor.search(u"O'Leary"_s);
    m_visitor.find<QWidget>(u"errorStrip"_s);
    m_visitor.click(u"cmdDetails"_s);
    QDialog* list = nullptr;
    m_visitor.wait(u"the list of problems"_s, [&] {
        list = m_visitor.window().findChild<QDialog*>(u"ErrorReportList"_s);
        return list && list->isVisible();
    });
    m_visitor.picture(u"problems"_s, list);
    list->close();
    m_visitor.click(u"cmdDismiss"_s);
}

void ManualTour::health() {
    m_visitor.robot().expectDialog(u"HealthPage"_s, [this](QWidget& page) {
        m_visitor.wait(u"the end of the check"_s, [&] {
            for (const QLabel* label : page.findChildren<QLabel*>())
                if (label->text() == sorvanto::translated(u"Being checked"_s))
                    return false;
            return true;
        });
        m_visitor.picture(u"health"_s, &page);
        Visitor::click(Visitor::find<QAbstractButton>(page, u"cmdClose"_s));
    });
    m_program.menuBar(u"mnuHelp"_s, u"mnuHealth"_s);
}

void ManualTour::run(int language) {
    startForTheFirstTime(language);
    formulas();
    history();
    records();
    trace();
    unsavedText();
    delivery();
    health();
    problems();
    m_program.leave();
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), u"%1 can't be read."_s.arg(path));
    return file.readAll();
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            u"%1 can't be written."_s.arg(path));
}

/// What is wrong, and the way back. A database that is locked is so from outside.
class Broken {
public:
    Broken(const QString& folder, const QString& name)
        : m_database(QDir(folder).filePath(u"sorvanto.mdb"_s)),
          m_options(QDir(folder).filePath(u"options.xml"_s)), m_records(contentOf(m_database)),
          m_settings(contentOf(m_options)) {
        if (name == "start-damaged"_L1)
            writeFile(m_database, QByteArray(9000, 'x'));
        else if (name == "start-missing"_L1)
            QFile::remove(m_database);
        else if (name == "start-folder"_L1)
            writeFile(m_options, QByteArray(m_settings)
                                     .replace(m_database.toUtf8(),
                                              QDir(folder).filePath(u"share/sorvanto.mdb"_s).toUtf8()));
        else if (name == "start-options"_L1)
            writeFile(m_options, "<Configuration><Opt");
    }
    ~Broken() {
        writeFile(m_database, m_records);
        writeFile(m_options, m_settings);
    }
    Broken(const Broken&) = delete;
    Broken& operator=(const Broken&) = delete;

private:
    QString m_database, m_options;
    QByteArray m_records, m_settings;
};

}  // namespace

void runManual(const QString& programFolder, const QString& pictureFolder, int language) {
    ManualTour(programFolder, pictureFolder).run(language);
}

// The program is not followed any further: it ends with its picture.
void runBrokenStart(const QString& programFolder, const QString& pictureFolder, const QString& name) {
    auto broken = std::make_unique<Broken>(programFolder, name);
    Visitor visitor(pictureFolder, {});
    visitor.nameAlone();
    Program program(visitor, programFolder);
    visitor.robot().mayCome(u"StartQuestion"_s, [&](QWidget& question) {
        visitor.picture(name, &question);
        broken.reset();
        std::_Exit(0);
    });
    program.start();
    stopTour(u"%1 did not come."_s.arg(name));
}

}  // namespace tour
