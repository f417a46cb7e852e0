// The simulator's end of a pseudo-terminal, with a link that a program can open as its port.
#pragma once

#include <QByteArray>
#include <QString>

namespace sorvanto::mixersim {

class PseudoTerminal {
public:
    /// link: path of a symbolic link to keep on the terminal; empty for none.
    explicit PseudoTerminal(QString link);
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// A new terminal; the link is set on it. False with errorText() when that fails, also when something
    /// that is no link stands at the link's path.
    bool open();
    /// Cuts the line: whoever has it open meets the end of it. The link goes as well.
    void close();
    bool isOpen() const { return m_master >= 0; }
    QString path() const { return m_path; }
    QString errorText() const { return m_errorText; }

    /// Waits up to that long for bytes. Empty when none came, or when nobody has the line open.
    QByteArray read(int waitMilliseconds);
    void write(const QByteArray& bytes);
    /// After a program that died with the line: its mark "for me alone" stays on the terminal and would shut
    /// the next one out.
    bool isLeftLocked();

private:
    bool setLink();

    QString m_link, m_path, m_errorText;
    int m_master = -1;
    bool m_peer = true;    ///< no hang-up seen since somebody last had it open
    int m_quietReads = 0;  ///< reads since the hang-up
    bool m_checked = false;
};

}  // namespace sorvanto::mixersim
