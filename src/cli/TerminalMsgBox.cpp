#include "TerminalMsgBox.h"

#include <cstdio>

TerminalMsgBox::TerminalMsgBox(QTextStream &out, Preset preset)
    : m_out(out)
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
    if (m_preset == Preset::Ask) {
        m_out << "[y/n] ";
        m_out.flush();
        char line[64] = {};
        yes = std::fgets(line, sizeof line, stdin) && (line[0] == 'y' || line[0] == 'Y');
    } else {
        m_out << (yes ? "(yes)\n" : "(no)\n");
    }
    m_out.flush();
    if (buttons == Buttons::YesNo)
        return yes ? Answer::Yes : Answer::No;
    return yes ? Answer::Ok : Answer::Cancel;
}
