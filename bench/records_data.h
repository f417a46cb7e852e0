// A pharmacy of a given size in a temporary file, with the program's shared objects around it.
#pragma once

#include "platform/xml/XmlDocument.h"

#include <QString>
#include <QTemporaryDir>
#include <sqlite3.h>

namespace bench {

inline constexpr int batches = 32000;         ///< logged batches named "Gel ..."
inline constexpr int fewHits = 1200;          ///< of these, named "Gel Few ..."
inline constexpr std::int16_t formula30 = 1;  ///< formulas of 30, 100 and 1,000 lines
inline constexpr std::int16_t formula100 = 2;
inline constexpr std::int16_t formula1000 = 3;

class Pharmacy {
public:
    Pharmacy();
    ~Pharmacy();
    Pharmacy(const Pharmacy&) = delete;
    Pharmacy& operator=(const Pharmacy&) = delete;

    /// Runs a statement straight on the engine, reads every field and gives the count of rows.
    int bare(const char* statement);
    /// Runs statements whose rows do not matter.
    void run(const char* statements);

private:
    QTemporaryDir m_folder;
    sqlite3* m_handle = nullptr;
};

/// Formula and results documents of one mix.
platform::XmlDocumentPtr parsed(const char* xml);

}  // namespace bench
