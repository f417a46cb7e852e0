// A mix of the real program that ends while its user is in the midst of something.
#include "Pharmacy.h"

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

class BusyPharmacy : public Pharmacy {
protected:
    /// Slow enough for the user to be somewhere else when the mix ends.
    int mixerSpeed() const override { return 60; }
    void play(const char* scene) {
        const Ending end = tour({u"--busy"_s, QLatin1String(scene)});
        ASSERT_FALSE(end.killed);
        ASSERT_EQ(end.code, 0) << end.err.toStdString();
        EXPECT_EQ(sql(u"SELECT log_Name, log_Initials, log_Verified FROM Log ORDER BY LogID DESC LIMIT 1"_s),
                  "Hydrocortisone 1% Cream|MR|JT");
    }
};

TEST_F(BusyPharmacy, AListStaysOpenAndItsRowIsTheOneThatIsOpened) {
    play("list");
    EXPECT_EQ(sql(u"SELECT count(*) FROM Log"_s), "13");
}

TEST_F(BusyPharmacy, ADeletionTakesTheBatchAloneAndAsksOnce) {
    play("delete");
    EXPECT_EQ(sql(u"SELECT count(*) FROM Log WHERE LogID = 12"_s), "0");
    EXPECT_EQ(sql(u"SELECT count(*) FROM Formula"_s), "22");
}

TEST_F(BusyPharmacy, AHalfTypedNoteIsSavedAndSignsNothing) {
    play("note");
    EXPECT_EQ(sql(u"SELECT count(*) FROM Log WHERE log_Notes LIKE 'stir well%and cool'"_s), "1");
}

}  // namespace
}  // namespace e2e
