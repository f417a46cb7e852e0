// Base of the mixing tests: a real database with two formulas, the real mixer control, and a main window of
// the bar alone that writes down what is asked of it.
#pragma once

#include "Child.h"
#include "StandardText.h"
#include "TestProgram.h"
#include "mixer/ctlSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "platform/xml/XmlDocument.h"
#include "shared/BatchLog.h"
#include "shared/MainWindow.h"
#include "shared/basMain.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <functional>

class BarOnlyWindow : public sorvanto::MainWindow, public sorvanto::BatchLog {
public:
    BarOnlyWindow() {
        m_bar.addBand("FormBar", platform::BandKind::SideBar)
            .addTool(platform::ToolKind::Button, "cmdFormulas");
        sorvanto::basMain::Main = this;
    }
    platform::CommandBar& bar() override { return m_bar; }
    void ActiveBar_ToolClick(platform::Tool& tool) override { trace << "click " + tool.name(); }
    void setCaption(const QString&) override {}
    void refreshForm() override {}
    void enableForm() override { trace << "enableForm"; }
    void connectListener(sorvanto::ToolListener&) override { trace << "connect"; }
    void releaseListener(sorvanto::ToolListener&) override { trace << "release"; }
    sorvanto::frmCurrFormula& currentFormulaScreen() override {
        throw platform::RuntimeError(platform::error::objectNotSet, "No screens here");
    }
    sorvanto::BatchLog& batchLog() override { return *this; }
    sorvanto::ctlSorvanto& mixer() override { return control ? *control : m_ownControl; }

    bool addLog(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) override {
        trace << "addLog " + formula->xml() + " " + results->xml();
        if (onLog)
            onLog();
        return logged;
    }
    bool isLogged(const QString& lot) override {
        trace << "isLogged " + lot;
        if (onLog)
            onLog();
        return inLog;
    }

    QStringList trace;
    bool logged = true;
    bool inLog = false;  ///< whether any lot is in the log already
    std::function<void()> onLog;
    sorvanto::ctlSorvanto* control = nullptr;  ///< in place of its own one

private:
    platform::CommandBar m_bar;
    sorvanto::ctlSorvanto m_ownControl;
};

class MixingTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        openDatabase();
        sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Cost, chm_AWP) VALUES"
            " (1, 'Camphor', 'GMS', 2, 4.5);"
            "INSERT INTO Formula (FormulaID, frm_Name, frm_Quantity, frm_JarSize, frm_FormType, frm_Mix) VALUES"
            " (1, 'Cooling Gel', 10, 3, 9, '<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>'),"
            " (2, 'No Batch', 0, 3, 3, '<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>');"
            "INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active)"
            " VALUES (1, 1, 1.2345, 0, 1);");
        main = std::make_unique<BarOnlyWindow>();
    }
    void TearDown() override {
        sorvanto::basMain::Main = nullptr;
        main.reset();
        TestProgram::TearDown();
    }

    static platform::XmlDocumentPtr document(const QString& xml) {
        const auto made = platform::XmlDocument::create();
        EXPECT_TRUE(made->loadXML(xml)) << str(xml);
        return made;
    }
    /// As the mixer gives it back: type 5, jar 7 and two steps, whatever the stored formula says.
    static QString formulaXml(const QString& id = "<ID>1</ID>") {
        return "<Formula>" + id +
               "<Name>Cooling Gel</Name><Type>5</Type><Size>7</Size><QTY>10</QTY><Make>25</Make>" + mixXml() +
               "</Formula>";
    }
    static QString mixXml() {
        return "<CustomMix PreGrind=\"3\" FreeSpin=\"4\"><Mix LiftRPM=\"24\" MixRPM=\"12\" MixTime=\"00:00:01\""
               " Cycles=\"0\"/></CustomMix>";
    }

    std::unique_ptr<BarOnlyWindow> main;
};
