// Where the records are kept: a file, or a server, as one text of the options.
#pragma once

#include <QString>

namespace platform {

class DataLocation {
public:
    /// A text that begins with "postgresql://" or "postgres://" is a server, anything else the path of a file. Throws
    /// cannotOpen for the address of a server that can't be read, and for one with a password in it, in whichever form:
    /// the text is stored where others can read it. The error never repeats what was typed.
    explicit DataLocation(const QString& text);

    bool isServer() const { return m_isServer; }
    /// The same of a text that may be no location at all. Never throws.
    static bool namesServer(const QString& text);
    /// Without blanks around it: the path, or the address.
    const QString& text() const { return m_text; }
    /// Short, to be shown: the name of the file, or "sorvanto@bench-server" by database and host; the database alone where
    /// the server is on this computer, the host alone where no database is named.
    const QString& shownName() const { return m_shownName; }

private:
    QString m_text, m_shownName;
    bool m_isServer = false;
};

}  // namespace platform
