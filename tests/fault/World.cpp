// Starting the program on a folder, and reading what it left there.
#include "World.h"

#include "Disk.h"
#include "core/DailyBackup.h"
#include "core/InstanceLock.h"
#include "db/DatabaseCheck.h"
#include "mixer/NoticeCard.h"
#include "mixer/ctlSorvanto.h"
#include "mixing/frmSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"

#include <QLabel>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <regex>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace fault {

platform::Answer WillingUser::messageBox(const QString& prompt, platform::BoxStyle style, const QString&) {
    boxes << prompt;
    return style.buttons == platform::Buttons::Ok ? platform::Answer::Ok : platform::Answer::Yes;
}

QString WillingUser::inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) {
    return u"20"_s;
}

void WillingUser::showModal(QObject& window, const std::function<void()>&) {
    auto* form = qobject_cast<QWidget*>(&window);
    if (!form || form->objectName() != "frmInitials"_L1) {
        boxes << u"window "_s + window.objectName();
        if (form)
            form->hide();
        return;
    }
    ++signings;
    form->show();
    support::child<platform::TextBox>(*form, u"txtInitials"_s)->setText(u"RK"_s);
    support::child<platform::TextBox>(*form, u"txtVerified"_s)->setText(u"LM"_s);
    support::child<QPushButton>(*form, u"cmdOK"_s)->click();
    form->hide();
}

namespace {

constexpr int longerThanAnyTest = 3'600'000;

QString delivered(const QString& name) {
    QFile file(QStringLiteral(SORVANTO_SOURCE_DIR "/data/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QByteArray languageFile() {
    QFile file(QStringLiteral(SORVANTO_SOURCE_DIR "/languages/EnglishTranslation.xml"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Of Qt on files that it can't remove, and the like.
void swallow(QtMsgType, const QMessageLogContext&, const QString&) {}
}  // namespace

World::World(Window kind, const Image* left, const mixersim::SimulatedMixer* mixer)
    // Qt remarks on files that it can't remove, and the like.
    : m_keptHandler(qInstallMessageHandler(swallow)), m_kind(kind), m_left(left) {
    SetUp();
    if (mixer)
        line.mixer = *mixer;
    platform::setAsker(&user);
    if (kind != Window::None)
        open();
}

void World::open() {
    Parts parts = realParts(context);
    parts.mixerScreen = [this] { return std::make_unique<frmSorvanto>(context, line.environment()); };
    parts.seekPreviousInstance = nullptr;  // a thread, whose writes would come among those that are counted
    parts.previousInstance = [] { return InstanceState(); };
    // Not in the midst of something else; they have a test of their own.
    parts.copies = [] { return std::make_unique<DailyBackup>(context, longerThanAnyTest); };
    load(parts);
    openDB()->setTrace([this](const QString&) {
        if (onStatement)
            onStatement();
    });
}

World::~World() {
    const Disk::Unseen own;
    onStatement = nullptr;
    platform::setAsker(&asker);
    dropReports();
    window.reset();
    dropReports();
    TearDown();
    qInstallMessageHandler(m_keptHandler);
}

void World::seed() {
    if (!m_left) {
        seedLogs();
        if (m_kind != Window::OldFile)
            bringUpToDate();
        // As delivered: no text is new.
        folder.write(u"EnglishTranslation.xml"_s, languageFile());
        return;
    }
    m_left->layOut(folder.path());
    QDir(folder.path()).mkpath(u"ports"_s);
    QString options = QString::fromUtf8(folder.read(u"options.xml"_s));
    options.replace(QRegularExpression(u"<DBLocation>[^<]*"_s), u"<DBLocation>"_s + databasePath());
    folder.write(u"options.xml"_s, options.toUtf8());
}

/// With an identity, the same in each world, and a history of each change from here on.
void World::bringUpToDate() const {
    sql(delivered(u"identity.sql"_s) + delivered(u"history.sql"_s) +
        u"UPDATE FileIdentity SET fid_Identity = '0123456789abcdef0123456789abcdef'"_s);
}

QStringList World::told() {
    QStringList all = user.boxes + m_said;
    for (const support::ReportCall& call : reporter->calls)
        all << call.tag + u": "_s + call.description;
    if (window) {
        for (const auto* card : window->mixer().findChildren<NoticeCard*>()) {
            if (card->isVisibleTo(&window->mixer()))
                all << card->text();
        }
    }
    return all;
}

QStringList World::toldBeyond(const QStringList& usual) {
    QStringList beyond = told();
    beyond.removeIf([&](const QString& text) { return usual.contains(text); });
    return beyond;
}

QPushButton* World::panelButton(const char* name) const {
    return support::child<QPushButton>(window->mixer(), QString::fromLatin1(name));
}

bool World::isShown(const char* name) const { return panelButton(name)->isVisible(); }

QStringList World::offers() const {
    QStringList texts;
    for (const QLabel* label : window->mixer().findChildren<QLabel*>(u"mixerOffer"_s)) {
        if (label->isVisible())
            texts << label->text();
    }
    return texts;
}

namespace {

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

/// Hold identities of files, moments, and what is made of them.
constexpr std::array<std::string_view, 8> randomColumns{"fid_Identity", "fid_Parent", "kmp_Archive",
                                                        "abt_Archive",  "hst_When",   "hst_Salt",
                                                        "hst_Digest",   "hst_Seal"};

std::string shown(std::string_view column, const char* value) {
    static const std::regex identity("[0-9a-f]{32,}");
    if (!value)
        return "NULL";
    if (std::find(randomColumns.begin(), randomColumns.end(), column) != randomColumns.end())
        return "identity";
    // A change that names an archive or a seal has it in its midst.
    return column == "hst_Fields" ? std::regex_replace(value, identity, "identity") : value;
}

int appendRow(void* target, int count, char** values, char** names) {
    auto& text = *static_cast<std::string*>(target);
    for (int i = 0; i < count; ++i)
        text += (i == 0 ? "" : "|") + shown(names[i], values[i]);
    text += '\n';
    return 0;
}

/// False when the engine can't.
bool append(sqlite3* database, const std::string& query, std::string& text) {
    return sqlite3_exec(database, query.c_str(), appendRow, &text, nullptr) == SQLITE_OK;
}

}  // namespace

std::string recordsOf(const QString& database) {
    const Disk::Unseen own;
    if (!QFile::exists(database))
        return "<no file>";
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(database.toUtf8().constData(), &raw, SQLITE_OPEN_READWRITE, nullptr);
    const Handle handle(raw, sqlite3_close);
    std::string tables;
    if (code != SQLITE_OK ||
        !append(raw, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY 1", tables))
        return "<unreadable>";
    std::string all;
    for (const QString& table : QString::fromStdString(tables).split('\n'_L1, Qt::SkipEmptyParts)) {
        all += "== " + table.toStdString() + '\n';
        const std::string rows = "SELECT * FROM \"" + table.toStdString() + "\" ORDER BY ";
        if (!append(raw, rows + "rowid", all) && !append(raw, rows + "1, 2, 3", all))  // some have no rowid
            return "<unreadable>";
    }
    return append(raw, "PRAGMA user_version", all) ? all : "<unreadable>";
}

QStringList problemsOf(const QString& database) {
    const Disk::Unseen own;
    try {
        return checkDatabase(database);
    } catch (const platform::RuntimeError& failure) {
        return {failure.description()};
    }
}

}  // namespace fault
