// The mixer control: the operations and events by which the rest of the program meets the mixer,
// and the panel on which the user runs it. Knows nothing of records.
#pragma once

#include "mixer/Reconciliation.h"
#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace sorvanto {

struct BatchRows;
class Desk;
class LogBook;
struct MixerEnvironment;

/// A mix that was started here and has not ended as far as is known.
struct MixUnderWay {
    enum class Course { Mixing, Paused, Unseen };
    Course course = Course::Mixing;
    QString name;
    QString timeLeft;  ///< "03:48"; empty while the mixer can't be seen
    int formula = 0;   ///< its key; 0 where it is not stored in the open database
    QDateTime since;
};

class ctlSorvanto : public QWidget {
    Q_OBJECT

public:
    explicit ctlSorvanto(QWidget* parent = nullptr);
    /// With ports and times of the caller's choice.
    explicit ctlSorvanto(MixerEnvironment environment, QWidget* parent = nullptr);
    ~ctlSorvanto() override;

    void SetStoreInfo(const QString& storeName, const QString& empty, const QString& phone);
    /// What the program has read of the language file already, before setSettings: English in, the user's language out,
    /// empty where there is none. Without it setSettings reads the file.
    void setTextSource(std::function<QString(const QString& english)> known);
    /// The settings, once, before StartControl. CommPort 1 to 4.
    void setSettings(std::int16_t commPort, std::int16_t language, std::int16_t overrideSpeed,
                     const QString& translationPath);
    QStringList MixTypes() const;
    QStringList JarSizes() const;
    QStringList MixTimes() const;
    /// Opens the port, and offers mixes that finished but were never logged.
    void StartControl();
    /// Takes a formula document and sends its programme to the mixer; a copy is kept.
    void loadFormula(const platform::XmlDocumentPtr& formula);
    /// The signing dialog has answered, whatever the answer.
    void mixerInitialsClosed();
    /// Stops talking to the mixer; loadFormula and StartControl may follow.
    void CloseControl();

    /// The mix whose mixDone is being handled has been written to the log: its journal is closed.
    void mixLogged();
    /// The mix being handled can't be logged because its formula is gone; the panel says so.
    void mixFormulaGone();
    /// Where the user sits; outlives the control. Without one, mixDone is raised as soon as a mix ends; with
    /// one, when the desk is free or the user asks for it.
    void setDesk(Desk* desk);
    /// The mix that quitting would leave alone; nothing when there is none, or the mix is another's.
    std::optional<MixUnderWay> mixUnderWay() const;
    /// Whether a mix was started that is not logged yet, under way, waiting or on offer: its ingredients are read when it
    /// is.
    bool hasUnloggedMix() const;
    /// Key of the stored formula that is loaded and may still be mixed, with what was weighed for it; 0: it has none;
    /// nothing: there is no such formula.
    std::optional<int> formulaToMix() const;
    /// Asked before a mix is offered again: whether its lot is in the log already.
    void setLoggedTest(std::function<bool(const QString& lot)> test);
    /// The log of the open database; outlives the control.
    void setLogBook(LogBook* book);
    /// Another database is open now, or the first one.
    void databaseOpened();
    /// The rows of the mix whose mixDone is being handled are about to be written. Throws when the journal can't
    /// take them down: then they must not be written.
    void takeDown(const BatchRows& rows);
    /// A batch is about to be deleted from the log at the user's wish; undoDeletion when it was not. Both throw
    /// when the journal can't be written: then it must not be deleted.
    void noteDeletion(const BatchRows& rows);
    void undoDeletion();
    /// A batch that was deleted is in the log again. Throws when the journal can't be written.
    void noteRestored(const BatchRows& rows);
    /// What became of every preparation, as of the last start, signing or putting aside.
    const Reconciliation& reconciliation() const;

    /// Asked for the unit of a stored formula, by its key, to name a batch with; "" when not known.
    void setUnitSource(std::function<QString(int formulaID)> unitOf);
    /// How far the mix whose mixDone is being handled came; nothing when that was not followed.
    std::optional<protocol::Status> reached() const;

signals:
    /// A mix has ended. Blocks while the user signs; mixerInitialsClosed comes from inside.
    void mixDone(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results);
    void enableForm();

private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace sorvanto
