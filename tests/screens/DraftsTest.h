// The screens with typed text, and the strip that offers what was lost of it.
#pragma once

#include "PatientScreenTest.h"

#include "platform/widgets/CommandBar.h"
#include "shared/Draft.h"

#include <QDir>
#include <QLabel>

class DraftsTest : public PatientScreenTest {
protected:
    using ScreenNumber = sorvanto::ScreenNumber;

    void openAt(ScreenNumber number) {
        load();
        click(button(number));
    }
    /// Open for editing; the chemical screen is that from the start.
    void editAt(ScreenNumber number) {
        openAt(number);
        if (number != sorvanto::chemicals)
            click("cmdEdit");
    }
    static QString button(ScreenNumber number);
    /// The box that a record's notes are typed into.
    static QString notesBox(ScreenNumber number);
    platform::MemoBox& notes(ScreenNumber number) const {
        return control<platform::MemoBox>(number, notesBox(number));
    }
    void type(ScreenNumber number, const QString& keys) const;
    /// What is typed there lies in its file, without waiting for the moment at which it goes there by itself.
    void keepNow(ScreenNumber number) const;
    sorvanto::BrowsingScreen& browsing(ScreenNumber number) const {
        return screen<sorvanto::BrowsingScreen>(number);
    }

    QWidget& strip() const { return *support::child<QWidget>(*window, "draftStrip"); }
    /// What the strip says; empty while it is hidden.
    QString offer() const {
        return strip().isVisible() ? support::child<QLabel>(strip(), "lblDraft")->text() : QString();
    }
    QString offerButton() const { return support::child<QPushButton>(strip(), "cmdBringBack")->text(); }
    void bringBack() const { support::child<QPushButton>(strip(), "cmdBringBack")->click(); }
    void discard() const { support::child<QPushButton>(strip(), "cmdDiscard")->click(); }
    /// The window that shows a draft only to be read; nullptr while there is none on show.
    QWidget* reader() const;
    QString readerText(const QString& name) const;

    /// The drafts as files, once there are that many.
    std::vector<sorvanto::Draft> files(int expected) const;
    void writeDraft(const sorvanto::Draft& draft) const;
    QString mark(ScreenNumber number) const { return tool(button(number)).mark(); }
    /// Ends this run of the program and starts the next one.
    void startAgain() {
        window.reset();
        load();
    }
};
