// A form shown modally ends when it is hidden, whoever hides it.
#include "platform/widgets/ModalForm.h"
#include "ScriptedAsker.h"
#include "platform/widgets/QtAsker.h"

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using namespace platform;

class Form : public ModalForm {
public:
    int closed = 0;
    bool stays = false;

protected:
    void onCloseBox() override {
        ++closed;
        if (!stays)
            hide();
    }
};

class ModalForms : public testing::Test {
protected:
    void SetUp() override { setAsker(&asker); }
    void TearDown() override { setAsker(nullptr); }
    QtAsker asker;
    Form form;
};

TEST_F(ModalForms, HidingEndsTheShow) {
    QTimer::singleShot(0, &form, [this] {
        EXPECT_TRUE(form.isVisible());
        EXPECT_TRUE(form.isModal());
        form.hide();
    });
    form.showModal();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.closed, 0);
}

TEST_F(ModalForms, TheCloseBoxAndEscapeMeanWhatTheFormSays) {
    QTimer::singleShot(0, &form, [this] { form.close(); });
    form.showModal();
    EXPECT_EQ(form.closed, 1);
    QTimer::singleShot(0, &form, [this] { QTest::keyClick(&form, Qt::Key_Escape); });
    form.showModal();
    EXPECT_EQ(form.closed, 2);
}

TEST_F(ModalForms, ACloseBoxThatIsRefusedKeepsTheFormUp) {
    form.stays = true;
    QTimer::singleShot(0, &form, [this] {
        EXPECT_FALSE(form.close());
        EXPECT_TRUE(form.isVisible());
        form.hide();
    });
    form.showModal();
    EXPECT_EQ(form.closed, 1);
}

TEST(ScriptedForms, GoThroughTheAskerInForce) {
    support::ScriptedAsker asker;
    Form form;
    form.setObjectName("frmSample");
    asker.expectModal("frmSample", [](QWidget& shown) { shown.hide(); });
    form.showModal();
}

}  // namespace
