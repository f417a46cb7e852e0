// Offers the drafts, one at a time and the newest first, and marks the screens that hold typed text.
#pragma once

#include "shared/DraftedScreen.h"

#include <QHash>
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
    /// The records may have changed: what is offered is judged anew.
    void look();

private:
    struct Place {
        DraftedScreen* screen;
        platform::Tool* button;
    };

    std::vector<const Draft*> offers() const;
    const Place* placeOf(const Draft& draft) const;
    DraftFit fitOf(const Draft& draft) const;
    QString textOf(const Draft& draft, DraftFit fit) const;
    void step(int direction);
    void bringBack();
    void discard();
    void discardAll();
    void read(const Draft& draft, DraftFit fit);

    frmMain& m_window;
    DraftStore& m_store;
    std::vector<Place> m_places;
    DraftStrip* m_strip;
    QPointer<DraftReader> m_reader;
    QString m_newest, m_shown;         ///< ids: of the newest draft, and of the one in the strip
    int m_at = 0;                      ///< its place among the offers
    QHash<QString, DraftFit> m_tried;  ///< what could not be brought back, and why
};

}  // namespace sorvanto
