#include "setting/ProgramSteps.h"

const QString &ProgramSteps::at(qsizetype step) const
{
    static const QString empty;
    return step < m_texts.size() ? m_texts.at(step) : empty;
}

QList<QString> &ProgramSteps::held()
{
    if (m_texts.size() < Count)
        m_texts.resize(Count);
    return m_texts;
}

bool operator==(const ProgramSteps &a, const ProgramSteps &b)
{
    if (a.m_texts.size() == b.m_texts.size() && a.m_texts.constData() == b.m_texts.constData())
        return true;
    for (qsizetype step = 0; step < ProgramSteps::Count; ++step) {
        if (a.at(step) != b.at(step))
            return false;
    }
    return true;
}
