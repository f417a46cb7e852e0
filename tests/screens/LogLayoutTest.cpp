// The log, chemical and patient screens in each delivered language at the size of a small screen: no caption,
// heading, tab or button is cut off.
#include "PatientScreenTest.h"
#include "Settle.h"

#include "platform/widgets/CommandBar.h"

#include <QAbstractButton>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

const char* const languages[] = {"English", "Spanish",    "German",  "French",
                                 "Russian", "Portuguese", "Italian", "Swiss"};

class LogLayoutTest : public PatientScreenTest, public ::testing::WithParamInterface<int> {
protected:
    void seed() override {
        PatientScreenTest::seed();
        place().beginHistory(databasePath());
        for (const char* text : {"a", "b", "c"})  // a line of the log screen counts that
            sql(u"UPDATE Formula SET frm_Desc = '%1'"_s.arg(QLatin1String(text)));
    }
    QByteArray optionsXml() const override {
        const QString name = QString(languages[GetParam()]) + "Translation.xml";
        QFile delivered(QString(SORVANTO_SOURCE_DIR) + "/languages/" + name);
        EXPECT_TRUE(delivered.open(QIODevice::ReadOnly)) << str(name);
        folder.write(name, delivered.readAll());
        return PatientScreenTest::optionsXml().replace("<Language>0<",
                                                       "<Language>" + QByteArray::number(GetParam()) + "<");
    }
    /// Every visible text of the screen has the room that it asks for.
    void expectRoom(ScreenNumber number) const {
        support::settle();
        const QWidget& form = *window->screen(number);
        for (const auto* label : form.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << str(label->text());
            }
        }
        for (const auto* button : form.findChildren<QPushButton*>()) {
            if (button->isVisible()) {
                EXPECT_GE(button->width(), button->sizeHint().width()) << str(button->text());
            }
        }
        for (const auto* header : form.findChildren<QHeaderView*>()) {
            for (int column = 0; header->isVisible() && column < header->count(); ++column)
                EXPECT_GE(header->sectionSize(column), header->sectionSizeHint(column))
                    << str(header->model()->headerData(column, Qt::Horizontal).toString());
        }
    }
    void expectRoomOnTabs(ScreenNumber number, const QString& name) const {
        auto& tabs = control<QTabWidget>(number, name);
        EXPECT_GE(tabs.width(), tabs.tabBar()->sizeHint().width());
        for (int tab = 0; tab < tabs.count(); ++tab) {
            tabs.setCurrentIndex(tab);
            expectRoom(number);
        }
    }
};

TEST_P(LogLayoutTest, EveryTextHasRoom) {
    load();
    window->resize(1366, 768);
    click("cmdChemicals");
    expectRoom(chemicals);
    click("cmdLogs");
    expectRoomOnTabs(logs, "tabLog");
    click("cmdPatients");
    expectRoomOnTabs(patients, "tabPatient");
}

INSTANTIATE_TEST_SUITE_P(Languages, LogLayoutTest, ::testing::Range(0, 8),
                         [](const auto& row) { return std::string(languages[row.param]); });

}  // namespace
