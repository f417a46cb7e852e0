#include "MainWindowTest.h"
#include "core/DailyBackup.h"

using namespace Qt::StringLiterals;

namespace core_test {

Parts MainWindowTest::stubParts() {
    struct Kind {
        ScreenNumber number;
        const char* name;
        QStringList boxes;
    };
    const Kind kinds[] = {{currentFormula, "current", {}},
                          {formulas, "formulas", {}},
                          {chemicals, "chemicals", {"txtchm_Name"}},
                          {patients, "patients", {"txtpat_LName", "txtpat_FName"}},
                          {logs, "logs", {"txtlog_Name"}}};
    Parts stubs(context);
    stubs.copies = [] { return std::make_unique<DailyBackup>(context); };
    for (const Kind& kind : kinds) {
        stubs.screens[kind.number] = [this, kind] {
            return std::make_unique<StubScreen>(kind.name, trace, ++m_made[kind.number], kind.boxes);
        };
    }
    stubs.mixerScreen = [this] {
        auto screen = std::make_unique<StubScreen>("mixer", trace, 1);
        new ctlSorvanto(screen.get());
        mixerScreen = screen.get();
        return screen;
    };
    stubs.mixerControl = [this](RecordScreen& screen) -> ctlSorvanto& {
        trace << "control";
        return platform::deref(screen.findChild<ctlSorvanto*>());
    };
    stubs.formName = [](RecordScreen&) { return u"Cold Cream"_s; };
    stubs.updater = [this] {
        auto updater = std::make_unique<StubUpdater>(trace);
        if (prepareUpdater)
            prepareUpdater(*updater);
        return updater;
    };
    stubs.previousInstance = [this] {
        trace << "previousInstance";
        return false;
    };
    stubs.editOptions = [this] { trace << "editOptions"; };
    return stubs;
}

void MainWindowTest::make() {
    basMain::Options.reset();
    basMain::Language.reset();
    parts.reporter = [this] {
        trace << "reporter:create";
        return reporter;
    };
    window = std::make_unique<frmMain>(parts);
}

QStringList MainWindowTest::taken(const QStringList& words) {
    QStringList found;
    for (const QString& line : std::exchange(trace, {})) {
        const bool wanted =
            words.isEmpty() ||
            std::any_of(words.begin(), words.end(), [&](const QString& word) { return line.contains(word); });
        if (wanted)
            found << line;
    }
    return found;
}

}  // namespace core_test
