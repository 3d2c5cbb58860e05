#include "cli/TerminalMsgBox.h"

#include <cstdio>

TerminalMsgBox::TerminalMsgBox(QTextStream &out, QTextStream &err, Preset preset)
    : m_out(out)
    , m_err(err)
    , m_preset(preset)
{ }

MsgBox::Answer TerminalMsgBox::show(const QString &text, Buttons buttons, Icon)
{
    m_out << QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")) << "\n";
    if (buttons == Buttons::Ok) {
        m_out.flush();
        return Answer::Ok;
    }
    bool yes = m_preset == Preset::Yes;
    if (m_preset == Preset::Ask)
        yes = askYes();
    else
        m_out << (yes ? "(yes)\n" : "(no)\n");
    m_out.flush();
    if (buttons == Buttons::YesNo)
        return yes ? Answer::Yes : Answer::No;
    return yes ? Answer::Ok : Answer::Cancel;
}

bool TerminalMsgBox::askYes()
{
    for (;;) {
        m_out << "[y/n] ";
        m_out.flush();
        char line[256] = {};
        if (!std::fgets(line, sizeof line, stdin)) {
            m_out << "\n";
            m_out.flush();
            m_err << "No answer could be read (there is no terminal, or the input has ended), so the "
                     "answer is no. Give --yes or --no to answer every question.\n";
            m_err.flush();
            return false;
        }
        const QString answer = QString::fromLocal8Bit(line).trimmed().toLower();
        if (answer == QLatin1String("y") || answer == QLatin1String("yes"))
            return true;
        if (answer == QLatin1String("n") || answer == QLatin1String("no"))
            return false;
        m_out << "Please answer y or n.\n";
    }
}
