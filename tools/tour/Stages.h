// The whole tour is several runs of the program, one after the other, each in a process of its own.
#pragma once

#include <QString>

namespace tour {

/// Makes the folder for the pictures and takes away what an earlier tour left there; other files stay.
void prepareFolder(const QString& programFolder);
/// One picture of the start in the dark theme, the program left again.
void runDark(const QString& programFolder);
/// Pictures of all screens in the language of that number, at a first start in that folder.
void runLanguage(const QString& programFolder, const QString& pictureFolder, int language);
/// A process of this executable that looks at the sample pharmacy in German, in the folder tour/german.
void runGermanStage(const QString& programFolder);
/// A process of this executable that starts the program in its dark theme.
void runDarkStage(const QString& programFolder);
/// A process of this executable that begins with an empty file, in the folder tour/empty.
void runEmptyStage(const QString& programFolder);

}  // namespace tour
