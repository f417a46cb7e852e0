// The longest time that the interface stood still in an action, as a row of a table.
#pragma once

#include "whole_program.h"

#include <QApplication>
#include <QObject>
#include <QString>
#include <functional>

namespace bench {

class Blocks {
public:
    explicit Blocks(WholeProgram& program) : m_program(program) {}

    /// A block that was seen, in milliseconds, and the event that took longest in it.
    static void note(qint64 block, const QString& event);

    /// Runs the work as an event, then the loop until it is over and nothing is left to do for a while.
    void measure(const char* action, const std::function<void()>& work,
                 const std::function<bool()>& over = {});
    /// A tool that opens a modal window: its opening is a row, then the window is worked with.
    void window(const char* action, const char* band, const char* tool,
                const std::function<void(QWidget&)>& steps = {});
    void click(const char* action, const char* band, const char* tool);
    void press(const char* band, const char* tool);

    static void begin();
    static void print(const char* action);
    static void settleDown();

private:
    WholeProgram& m_program;
    QObject m_loop;
};

/// The first change: what the file was filled with by other programs is sealed before it.
void sealOthers(Blocks& blocks);
/// A record of each kind written anew, saved, thrown away and brought back.
void changeRecords(WholeProgram& program, Blocks& blocks);
/// Each window that reads many records.
void openWindows(WholeProgram& program, Blocks& blocks);
/// Deletions taken back, options, a PDF of all pages; in a folder with many copies and closed mixes.
void restOfTheWork(WholeProgram& program, Blocks& blocks);
/// A thousand closed mixes in the journal of the program folder.
void fillJournal();
/// Closes a program that has just been started. Nothing else can be measured in it afterwards.
void endTheProgram(WholeProgram& program, Blocks& blocks);
/// Dark and light.
void changeLooks(QApplication& application, WholeProgram& program, Blocks& blocks);

}  // namespace bench
