// What the user sees of the mixer: the link, what is loaded, how far the mix is, and the buttons.
#pragma once

#include "mixer/MixSession.h"
#include "mixer/PanelTexts.h"

#include <QHash>
#include <QWidget>
#include <functional>

class QBoxLayout;
class QLabel;
class QPushButton;

namespace sorvanto {

class FittingScrollArea;
class LinkRow;
class NoticeCard;
class OfferList;
class ProgressRing;
class StepsTable;

class MixerPanel : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the panel.
    MixerPanel(MixSession& session, const PanelTexts& texts, QWidget* parent = nullptr);

    void setStoreName(const QString& name);
    /// The unit of a stored formula, asked once for each mix.
    void setUnitSource(std::function<QString(int formulaID)> unitOf);
    /// Shows everything anew, also the captions.
    void refresh();

    QSize sizeHint() const override { return {311, 640}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPushButton* addButton(QBoxLayout& row, const char* name, void (MixerPanel::*pressed)());
    void buildHead(QBoxLayout& layout);
    void buildButtons(QBoxLayout& layout);
    StepsTable& steps();

    void showCaptions();
    void showLink();
    void showRing();
    void sizeRing();
    void showStopped();
    void showFormula();
    void showSpeeds();
    void showNotices();
    void showAccount();
    QString findings() const;
    void showButtons();
    bool isHeard() const;
    bool isToldLoaded() const;
    PanelMessage linkMessage() const;
    QString portName() const;
    QString timeLeft() const;
    QString unitOf(const protocol::MixId& mix, const platform::XmlDocumentPtr& document);

    void startPressed() { m_session.start(); }
    void pausePressed() { m_session.run().pause(); }
    void resumePressed() { m_session.run().resume(); }
    void stopPressed() { m_session.run().stop(); }
    void okPressed() { m_session.acknowledge(); }
    void loadAgainPressed() { m_session.loadAgain(); }
    void connectPressed() { m_session.open(); }
    void putAside(const Offer& offer);

    MixSession& m_session;
    const PanelTexts& m_texts;
    QLabel* m_title;
    LinkRow* m_link;
    ProgressRing* m_ring;
    QLabel* m_name;
    QLabel* m_quantity;
    QLabel* m_speeds;
    NoticeCard* m_problem;
    NoticeCard* m_notice;
    NoticeCard* m_waiting;  ///< a finished mix that waits for its signatures
    QPushButton* m_sign;
    FittingScrollArea* m_scroll;
    NoticeCard* m_warnings;
    QWidget* m_buttons;  ///< the row of those below; hidden while none of them is there
    QPushButton *m_start, *m_pause, *m_resume, *m_stop, *m_ok, *m_loadAgain, *m_connect;
    StepsTable* m_steps = nullptr;  ///< once there has been a formula
    QLabel* m_footnote;
    QLabel* m_account;  ///< whether every preparation is accounted for
    OfferList* m_offers;
    std::function<QString(int)> m_unitOf;
    QHash<protocol::MixId, QString> m_units;
    bool m_asksLater = false;
};

}  // namespace sorvanto
