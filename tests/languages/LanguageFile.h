// The delivered language files as a test reads them.
#pragma once

#include <QMap>
#include <QString>
#include <cstdint>
#include <vector>

namespace languages {

/// By language number.
inline const char* const names[] = {"English", "Spanish",    "German",  "French",
                                    "Russian", "Portuguese", "Italian", "Swiss"};
constexpr int count = 8;

struct Entry {
    QString english, translated;
};

/// The entries of a file in its order; empty when it can't be read.
std::vector<Entry> entries(const QString& path);
QMap<QString, QString> texts(const QString& path);

QString deliveredPath(int language);
QMap<QString, QString> delivered(int language);
/// Whole content of the delivered file.
QByteArray deliveredFile(int language);

/// A caption without the mark of its key.
inline QString withoutKey(QString caption) { return caption.remove(u'&'); }

}  // namespace languages
