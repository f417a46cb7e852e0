// Keeping drafts. A failure is reported once, not with every key: the text is still in its box.
#include "shared/DraftStore.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Guard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::RuntimeError;

constexpr int flushMilliseconds = 5000;
constexpr qint64 largestFile = 4'000'000;
constexpr auto ownerFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr auto ownerFolder = ownerFile | QFileDevice::ExeOwner;
const QString suffix = u".json"_s;

QString pathOf(const QString& folder, const QString& id) { return folder + '/'_L1 + id + suffix; }

bool tooOld(const QDateTime& time) {
    return time.isValid() && time < platform::now().addDays(-DraftStore::daysKept);
}

/// Made when the first draft comes. One that is a link leads the texts to a place that nobody chose for them.
void makeFolder(const QString& folder) {
    const QFileInfo info(folder);
    if (info.isSymLink())
        throw RuntimeError(platform::error::permissionDenied, u"%1 is a link"_s.arg(folder));
    if (!info.isDir() && !QDir().mkdir(folder, ownerFolder))
        throw RuntimeError(platform::error::permissionDenied, u"Can't make the folder %1"_s.arg(folder));
    if (info.exists() && !QFile::setPermissions(folder, ownerFolder))
        throw RuntimeError(platform::error::permissionDenied, u"Can't protect the folder %1"_s.arg(folder));
}

/// The rights come before the first letter: a file that is replaced hands its rights on.
void write(const QString& folder, const QString& id, const QByteArray& content) {
    makeFolder(folder);
    QFile file(pathOf(folder, id));
    const bool isNew = file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerFile);
    file.close();
    try {
        platform::writeFile(file.fileName(), content);
    } catch (...) {
        if (isNew)
            file.remove();
        throw;
    }
}

/// What a power cut in the midst of writing left behind.
bool isHalfWritten(const QString& name) {
    static const QRegularExpression form(u"^[0-9a-f]{32}\\.json\\.\\w{6}\\z"_s);
    return form.match(name).hasMatch();
}

}  // namespace

DraftStore::DraftStore(QObject* parent)
    : QObject(parent), m_folder(platform::programFolder() + u"/drafts"_s) {
    m_writer.setMaxThreadCount(1);  // keeps the order
}

DraftStore::~DraftStore() { flush(); }

void DraftStore::flush() { m_writer.waitForDone(flushMilliseconds); }

void DraftStore::read() {
    m_drafts.clear();
    if (QFileInfo(m_folder).isSymLink())
        return;
    for (const QString& name : QDir(m_folder).entryList(QDir::Files | QDir::NoSymLinks)) {
        if (name.endsWith(suffix) && isDraftId(name.chopped(suffix.size())))
            readFile(name);
        else if (isHalfWritten(name))
            QFile::remove(m_folder + '/'_L1 + name);
    }
    thinOut();
    emit changed();
}

void DraftStore::readFile(const QString& name) {
    QFile file(m_folder + '/'_L1 + name);
    std::optional<Draft> draft;
    if (file.size() <= largestFile && file.open(QIODevice::ReadOnly))
        draft = readDraftFile(file.read(largestFile));
    if (draft) {
        draft->id = name.chopped(suffix.size());
        draft->offered = draft->earlier = true;
        addInOrder(*draft);
        return;
    }
    // A damaged one may hold a patient's data as well: it stays as long as a whole one would.
    const QDateTime changed = file.fileTime(QFileDevice::FileModificationTime).toLocalTime();
    if (tooOld(QDateTime(changed.date(), changed.time(), Qt::UTC)))
        file.remove();
}

const Draft* DraftStore::find(const QString& id) const {
    const auto found =
        std::find_if(m_drafts.begin(), m_drafts.end(), [&](const Draft& draft) { return draft.id == id; });
    return found == m_drafts.end() ? nullptr : &*found;
}

void DraftStore::addInOrder(const Draft& draft) {
    const auto place = std::find_if(m_drafts.begin(), m_drafts.end(),
                                    [&](const Draft& other) { return other.time <= draft.time; });
    m_drafts.insert(place, draft);
}

bool DraftStore::erase(const QString& id) {
    return std::erase_if(m_drafts, [&](const Draft& draft) { return draft.id == id; }) > 0;
}

void DraftStore::put(const Draft& draft) {
    const Draft* known = find(draft.id);
    const bool inFile = known && draftFile(*known) == draftFile(draft);
    erase(draft.id);
    addInOrder(draft);
    if (!inFile)
        queue([this, folder = m_folder, id = draft.id, content = draftFile(draft)] {
            write(folder, id, content);
            QMetaObject::invokeMethod(
                this, [this] { m_failed = false; }, Qt::QueuedConnection);
        });
    thinOut();
    emit changed();
}

void DraftStore::remove(const QString& id) {
    if (!erase(id))
        return;
    queue([path = pathOf(m_folder, id)] { QFile::remove(path); });
    emit changed();
}

void DraftStore::thinOut() {
    std::vector<QString> gone;
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        if (i >= mostKept || tooOld(m_drafts[i].time))
            gone.push_back(m_drafts[i].id);
    }
    for (const QString& id : gone) {
        erase(id);
        queue([path = pathOf(m_folder, id)] { QFile::remove(path); });
    }
}

void DraftStore::queue(std::function<void()> work) {
    m_writer.start([this, work = std::move(work)] {
        try {
            work();
        } catch (const RuntimeError& failure) {
            QMetaObject::invokeMethod(
                this, [this, number = failure.number(), text = failure.description()] { tell(number, text); },
                Qt::QueuedConnection);
        }
    });
}

void DraftStore::tell(std::int32_t number, const QString& description) {
    if (std::exchange(m_failed, true))
        return;
    guarded(u"DraftStore:write"_s, [&] { throw RuntimeError(number, description); });
}

}  // namespace sorvanto
