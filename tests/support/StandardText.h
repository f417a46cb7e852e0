// Texts as a failed comparison prints them.
#pragma once

#include <QString>
#include <string>

inline std::string str(const QString& text) { return text.toStdString(); }
