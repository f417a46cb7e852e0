// Offers the drafts one after the other, the newest first, and marks the screens that hold typed text.
#pragma once

#include "shared/DraftedScreen.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <vector>

namespace platform {
class Tool;
}

namespace sorvanto {

class DraftReader;
class DraftStore;
class DraftStrip;
class frmMain;

class DraftOffers : public QObject {
    Q_OBJECT

public:
    /// The window gets the strip. Both outlive this object.
    DraftOffers(frmMain& window, DraftStore& store);
    ~DraftOffers() override;
    /// button: the screen's own on the side bar.
    void addScreen(DraftedScreen& screen, platform::Tool& button);

private:
    struct Place {
        DraftedScreen* screen;
        platform::Tool* button;
    };

    const Draft* newestOffer() const;
    const Place* placeOf(const Draft& draft) const;
    DraftFit fitOf(const Draft& draft) const;
    void showNewest();
    void bringBack();
    void discard();
    void read(const Draft& draft, DraftFit fit);

    frmMain& m_window;
    DraftStore& m_store;
    std::vector<Place> m_places;
    DraftStrip* m_strip;
    QPointer<DraftReader> m_reader;
    QString m_shown;                  ///< id of the draft in the strip
    DraftFit m_fit = DraftFit::Fits;  ///< of that draft
};

}  // namespace sorvanto
