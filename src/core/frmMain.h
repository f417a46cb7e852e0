// The main window. It owns the life of the program: makes every long-lived object in one fixed order, hosts
// the screens in the command bar, switches between them, hands each tool click on to the screen that
// listens, and ends the process. It does not know what a record tool means.
//   frmMain_load.cpp     start        frmMain_switch.cpp   tool clicks and switching of screens
//   frmMain.cpp          the window itself, closing, what the screens call
//   frmMain_trace.cpp    where something went          frmMain_picture.cpp  the first picture
//   frmMain_newLot.cpp   deliveries, and what formulas cost since
//   frmMain_others.cpp   other benches on the same records
//   frmMain_server.cpp   a copy in place of the server
#pragma once

#include "core/ListenerList.h"
#include "core/Parts.h"
#include "core/TraceWindow.h"
#include "history/OtherBenches.h"
#include "platform/basic/Currency.h"
#include "platform/widgets/CommandBar.h"
#include "shared/MainWindow.h"

#include <QMainWindow>
#include <QPointer>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace sorvanto {

class BenchWatch;
class ChangeStrip;
class clsChemical;
class DailyBackup;
class DeskWatch;
class DraftOffers;
class DraftStore;
class ErrorStrip;
struct WindowHealth;
class News;
class RecordListPlace;
class ResumeNext;
class SharedRecord;
class StatusLine;

class frmMain : public QMainWindow, public MainWindow {
    Q_OBJECT

public:
    explicit frmMain(Parts parts);
    ~frmMain() override;

    using ShowWindow = std::function<void()>;
    /// The whole start of the program, dialogs included. show: called once it looks as it will at the end, to show the
    /// window, which is then painted before the rest is made; not called when the start did not come so far. Without it
    /// the window is shown by the caller afterwards.
    void Form_Load(const ShowWindow& show = {});
    void Form_Activate();
    /// True when the closing is refused. Closes the mixer control in any case.
    bool Form_QueryUnload();
    /// Drops the screens and ends the process at once.
    void Form_Unload();
    /// Whether the program has been told to end.
    bool ended() const { return m_ended; }

    void ActiveBar_ToolClick(platform::Tool& tool) override;
    /// Enter (13) in the search box hands its text to the screen and empties it.
    void ActiveBar_ToolKeyPress(platform::Tool& tool, int key);
    void ActiveBar_ChildBandChange(platform::Band& band);
    /// A number of ScreenNumber.
    void SetCurrentForm(const std::int32_t& number);
    std::int32_t current() const { return m_current; }
    void translateForm();

    platform::CommandBar& bar() override { return m_bar; }
    void setCaption(const QString& caption) override;
    void refreshForm() override;
    void enableForm() override;
    void connectListener(ToolListener& listener) override { m_listeners.connect(listener); }
    void releaseListener(ToolListener& listener) override { m_listeners.release(listener); }
    frmCurrFormula& currentFormulaScreen() override;
    BatchLog& batchLog() override;
    ctlSorvanto& mixer() override;
    Dispensary* dispensary() override;
    void showHistoryOf(const QString& table, std::int64_t key, const QString& name,
                       const QDateTime& since) override;
    void announcePrices(const QString& text,
                        const std::map<std::int16_t, platform::Currency>& formerCosts) override;

    /// The hosted screen of that number; nullptr for the patient screen when it is switched off.
    RecordScreen* screen(int number) const { return m_screens.at(static_cast<std::size_t>(number)).get(); }

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // The stages of Form_Load.
    void load(const ShowWindow& show);
    void loadSharedObjects(const ResumeNext& step);
    void describeReports(const ResumeNext& step);
    void updateDatabase(const ResumeNext& step);
    void rememberDatabase();
    void loadLanguage(const ResumeNext& step);
    void refuseSecondInstance(const ResumeNext& step);
    void databaseOpened();
    void translateItself(const ResumeNext& step);
    void loadMixerScreen(const ResumeNext& step);
    void hostMixerScreen(const ResumeNext& step);
    void hostScreens(const ResumeNext& step, const ShowWindow& show);
    void showFirstPicture(const ShowWindow& show);
    void endOpening();
    void hostScreen(const ResumeNext& step, const ScreenRow& row);
    void keepDrafts(const ResumeNext& step);
    void openFormulas(const ResumeNext& step);

    void act(const QString& toolName, QString& searchText);
    void switchTo(const ScreenRow& row);
    void host(const ScreenRow& row);
    bool showsPatients(std::int32_t number) const;
    void showBands(std::int32_t number);
    /// Its button stands pressed; list and status line are those of the screen.
    void markScreen(std::int32_t number);
    QString captionOf(const ScreenRow& row);
    QString recordNameOf(const ScreenRow& row);
    RecordScreen& captionScreen(const ScreenRow& row);
    void raiseBtnClick(const QString& toolName, const QString& searchText);
    void showAbout();
    void showHealth();
    WindowHealth windowHealth() const;
    void showTrace();
    TraceWindow::Start traceStart() const;
    void showHistory();
    void showNewLot();
    QString newLotProblem(const clsChemical& chemical) const;
    void newLotAdded(const clsChemical& lot, const std::map<std::int16_t, platform::Currency>& formerCosts);
    void showRepricing(const std::map<std::int16_t, platform::Currency>& formerCosts = {});
    void rereadFormulas();
    void showWholeHistory();
    QString shownName() const;
    void showRecord(ScreenNumber number, std::int16_t key);
    void showKeysLeft();
    void watchBenches();
    void followOthers();
    void showChange();
    SharedRecord* shared() const;
    void editOptions();

    RecordScreen& hosted(ScreenNumber number) const;
    QString toolNameOf(const ScreenRow& row) const { return m_formNames.at(row.number); }
    void buildWindow();
    std::unique_ptr<DeskWatch> watchDesk();
    /// From now on nothing is written; says so and why. Nothing happens without a reason.
    void openForReading(const QString& reason);
    /// Tells that the tool would change something that is open for reading only; true when it would.
    bool refusesTool(const QString& toolName) const;
    /// Quitting during a mix is asked first; true when the user stays.
    bool staysForTheMix();
    /// Ends the program and starts it on the server's copy, or on the server. Not while something is mixed.
    void beginAnew(bool onCopy);
    void keepTypedText();
    void watchServer();
    /// The caption, and where a copy stands in for the server that as well.
    QString titleOf(const QString& caption) const;

    Parts m_parts;
    Context& m_context;  ///< of the parts
    platform::CommandBar m_bar;
    ListenerList m_listeners;
    std::unique_ptr<DatabaseUpdater> m_updater;
    std::unique_ptr<DailyBackup> m_backup;
    std::unique_ptr<DeskWatch> m_desk;
    std::unique_ptr<ServerLook> m_serverLook;
    std::unique_ptr<DraftStore> m_drafts;  ///< goes after the screens
    std::unique_ptr<DraftOffers> m_offers;
    std::array<std::unique_ptr<RecordScreen>, screenCount> m_screens;
    /// Second instances, read for the caption alone; made on first use, never shown, never listening.
    std::array<std::unique_ptr<RecordScreen>, screenCount> m_captionScreens;
    std::unique_ptr<RecordScreen> m_frmSorvanto;
    QPointer<ctlSorvanto> m_control;  ///< the mixer control, once it is made
    platform::Tool* m_sorvantoTool = nullptr;
    std::array<QString, screenCount> m_formNames;  ///< by screen number; also the names of the hosting tools
    std::int32_t m_current = 0;
    QString m_caption;
    std::int16_t m_showPatients = 0;  ///< the option as it was at the start
    bool m_ended = false;
    bool m_opening = false;    ///< the window is seen, and the start is not at its end
    bool m_activated = false;  ///< meanwhile
    ErrorStrip* m_strip = nullptr;
    RecordListPlace* m_list = nullptr;
    News* m_news = nullptr;
    StatusLine* m_status = nullptr;
    BenchWatch* m_others = nullptr;
    ChangeStrip* m_change = nullptr;
    HistoryEnds m_followed;  ///< what list and status line show
    QString m_readingOnlyWhy;
};

}  // namespace sorvanto
