// Options and language file are copied, the records are opened where they lie: a file, or a server.
#include "report/Pharmacy.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "mixer/MixTables.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DataLocation.h"
#include "shared/ErrorReporter.h"
#include "shared/RecordsVersion.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::RuntimeError;

void openDatabase(Context& context, const QString& path) {
    if (!platform::DataLocation::namesServer(path) && !platform::fileExists(path))
        throw RuntimeError(platform::error::fileNotFound, u"There is no database %1"_s.arg(path));
    context.databaseLocation = [path] { return path; };
    context.connection = std::make_shared<platform::Connection>();
    context.connection->open(u"Data Source="_s + path);
}

}  // namespace

Pharmacy::Pharmacy(const QString& programFolder)
    : m_context(basMain::context()), m_programFolder(programFolder) {
    platform::setProgramFolder(m_folder.path());
    m_context.reporter = std::make_shared<ErrorReporter>();
    m_context.reporter->onReport([this](const ErrorReport& report) {
        if (report.count == 1)
            m_failures << report.description;
    });
    m_context.jarSizes = jarNames();
}

Pharmacy::~Pharmacy() {
    basMain::reset();
    platform::setProgramFolder(QString());
}

void Pharmacy::open(const Order& order) {
    if (!m_folder.isValid())
        throw RuntimeError(platform::error::permissionDenied,
                           u"There is no place for temporary files: %1"_s.arg(m_folder.errorString()));
    readOptions(order);
    openDatabase(m_context, order.database);
    readLanguage(order);
    for (const QString& name : mixTypeNames())
        m_context.mixTypes << translated(name);
    if (m_context.connection->isServer()) {
        if (const QString why = versionRefused(*m_context.connection); !why.isEmpty())
            m_failures << why;
    }
    if (!m_failures.isEmpty())
        throw RuntimeError(platform::error::general, m_failures.join('\n'_L1));
}

// Without a file the options start as the program's own would.
void Pharmacy::readOptions(const Order& order) {
    const QString file = order.options.isEmpty() ? m_programFolder + u"/options.xml"_s : order.options;
    if (!order.options.isEmpty() || platform::fileExists(file)) {
        copyHere(file);
        QFile::rename(m_folder.filePath(QFileInfo(file).fileName()), m_folder.filePath(u"options.xml"_s));
    }
    m_context.options = std::make_shared<clsOptions>(m_context);
}

void Pharmacy::readLanguage(const Order& order) {
    const int language = order.language >= 0 ? order.language : m_context.options->Language();
    if (language < 0 || language >= languageNames().size())
        throw RuntimeError(platform::error::subscriptOutOfRange,
                           u"The options name no language (number %1)"_s.arg(language));
    const QString name = languageNames().at(language) + u"Translation.xml"_s;
    const QString beside = QFileInfo(order.options).absolutePath() + '/'_L1 + name;
    const bool there = !order.options.isEmpty() && platform::fileExists(beside);
    copyHere(there ? beside : m_programFolder + '/'_L1 + name);
    const auto store = std::make_shared<clsLanguage>();
    store->setLanguage(static_cast<std::int16_t>(language));
    m_context.language = store;
}

void Pharmacy::copyHere(const QString& source) const {
    const QString target = m_folder.filePath(QFileInfo(source).fileName());
    QFile file(source);
    if (!file.copy(target))
        throw RuntimeError(platform::error::fileNotFound,
                           u"%1 can't be read: %2"_s.arg(source, file.errorString()));
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace sorvanto
