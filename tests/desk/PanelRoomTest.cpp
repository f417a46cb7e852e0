// The panel of a small screen shows all that it has to say of a mix that waits, in the longest languages too.
#include "DeskTest.h"

#include "Settle.h"
#include "mixer/FittingScrollArea.h"
#include "mixer/ProgressRing.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QDir>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

constexpr int wholeLongMix = 600'000;  // milliseconds

class PanelRoomTest : public DeskTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        platform::applyTheme(*qApp, false);  // its margins and fonts are what needs the room
        DeskTest::SetUp();
    }
    QByteArray optionsXml() const override {
        return DeskTest::optionsXml().replace("<Language>0<",
                                              "<Language>" + QByteArray::number(GetParam()) + "<");
    }
    void seed() override {
        DeskTest::seed();
        const QDir languages(QStringLiteral(SORVANTO_SOURCE_DIR) + u"/languages"_s);
        for (const QString& name : languages.entryList({u"*.xml"_s}, QDir::Files)) {
            QFile::remove(folder.path(name));  // the tests' own English
            ASSERT_TRUE(QFile::copy(languages.filePath(name), folder.path(name)));
        }
    }
    bool scrolls() const {
        return window->mixer().findChild<FittingScrollArea*>()->verticalScrollBar()->isVisible();
    }
    const ProgressRing& ring() const { return *support::child<ProgressRing>(window->mixer(), "mixerRing"); }
    void startAndType() {
        window->resize(1366, 749);  // a small screen without its title bar
        click(u"cmdChemicals"_s);
        QString steps;
        for (int step = 0; step < 6; ++step)
            steps += u"<Mix LiftRPM=\"1200\" MixRPM=\"1200\" MixTime=\"00:00:30\" Cycles=\"0\"/>"_s;
        const QString xml =
            test::formulaDocument(u"<CustomMix PreGrind=\"2\" FreeSpin=\"1\">%1</CustomMix>"_s.arg(steps), 9,
                                  3, 20, u"Hydrocortisone 2.5% in Aquaphor"_s)
                ->xml()
                .replace(u"<ID>5<"_s, u"<ID>1<"_s);
        window->mixer().loadFormula(document(xml));
        ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStart")->isEnabled(); }));
        panelButton("mixerStart")->click();
        ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStop")->isVisible(); }));
        control<platform::MemoBox>(chemicals, u"txtchm_Notes"_s).setText(u"typed"_s);
    }
    void signIt() {
        sign();
        panelButton("mixerSign")->click();
        ASSERT_TRUE(test::waitFor([&] { return logCount() == 4 && !modalOnShow(); }));
    }
};

TEST_P(PanelRoomTest, AMixThatWaitsIsSeenWhole) {
    startAndType();
    line.run(wholeLongMix);
    ASSERT_TRUE(test::waitFor([&] { return waits(); }));
    support::settle();
    EXPECT_FALSE(scrolls());
    EXPECT_TRUE(panelButton("mixerSign")->isVisible());
    signIt();
    EXPECT_EQ(ring().height(), 172) << "the ring has its size again";
}

TEST_P(PanelRoomTest, AStoppedMixThatWaitsIsSeenWhole) {
    startAndType();
    line.run(60'000);
    ASSERT_TRUE(test::waitFor([&] { return ring().fraction() > 0; }));
    panelButton("mixerStop")->click();
    ASSERT_TRUE(test::waitFor([&] { return waits(); }));
    support::settle();
    EXPECT_FALSE(scrolls());
    signIt();
}

INSTANTIATE_TEST_SUITE_P(Languages, PanelRoomTest, testing::Values(0, 1, 2, 3, 4, 5, 6, 7));

}  // namespace
