// The two shapes of the failure path.
//   guarded("frmLog:saveForm", false, [&] { ... });   report, then leave with the fallback
//   ResumeNext step("frmMain:Form_Load"); step([&] { ... });   report, then go on with the next step
#pragma once

#include <QString>
#include <utility>

namespace sorvanto {

/// Hands the exception in flight to the program's ErrorReporter with the ten arguments every report has.
/// To be called in a catch block; never throws.
void reportCurrentError(const QString& tag) noexcept;

/// Runs the body; on a failure reports it and gives the fallback.
template <class Result, class Body>
Result guarded(const QString& tag, Result fallback, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        reportCurrentError(tag);
        return fallback;
    }
}

template <class Body>
void guarded(const QString& tag, Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        reportCurrentError(tag);
    }
}

/// Each call is one statement of a procedure that resumes at the next statement after a failure.
class ResumeNext {
public:
    explicit ResumeNext(QString tag) : m_tag(std::move(tag)) {}
    template <class Step>
    void operator()(Step&& step) const {
        guarded(m_tag, std::forward<Step>(step));
    }

private:
    QString m_tag;
};

}  // namespace sorvanto
