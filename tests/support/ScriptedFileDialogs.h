#pragma once

#include "widgets/FileDialogs.h"

#include <QStringList>

/// File dialogs answered from a queue of paths (an empty path is Cancel); records each filter.
class ScriptedFileDialogs : public FileDialogs
{
public:
    QString openFileName(QWidget *, const QString &, const QString &filter) override
    {
        filters.append(filter);
        return next();
    }
    /// One answer holds the chosen files separated by new lines.
    QStringList openFileNames(QWidget *, const QString &, const QString &filter) override
    {
        filters.append(filter);
        const QString answer = next();
        return answer.isEmpty() ? QStringList() : answer.split(QLatin1Char('\n'));
    }
    QString saveFileName(QWidget *, const QString &, const QString &filter, const QString &) override
    {
        filters.append(filter);
        return next();
    }

    QStringList answers;
    QStringList filters;
    int unexpected = 0;

private:
    QString next()
    {
        if (answers.isEmpty()) {
            ++unexpected;
            return QString();
        }
        return answers.takeFirst();
    }
};
