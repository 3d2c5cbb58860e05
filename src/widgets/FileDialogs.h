#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The system's open, save and folder dialogs. An empty answer means the operator cancelled.
/// Tests put a scripted implementation in its place.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    /// `filter` in Qt's form: "Setting file (*.stf);;Card control file (DQ480.csv)".
    virtual QString openFileName(QWidget *parent, const QString &caption, const QString &filter) = 0;

    /// Several files at once; empty when the operator cancelled. Dialogs that choose one file at a
    /// time give that one.
    virtual QStringList openFileNames(QWidget *parent, const QString &caption, const QString &filter)
    {
        const QString one = openFileName(parent, caption, filter);
        return one.isEmpty() ? QStringList() : QStringList {one};
    }

    /// Asks before replacing an existing file; `defaultSuffix` is added to a name typed without one.
    virtual QString saveFileName(QWidget *parent, const QString &caption, const QString &filter,
                                 const QString &defaultSuffix)
        = 0;
};

/// The desktop's own dialogs.
class QtFileDialogs : public FileDialogs
{
public:
    QString openFileName(QWidget *parent, const QString &caption, const QString &filter) override;
    QStringList openFileNames(QWidget *parent, const QString &caption, const QString &filter) override;
    QString saveFileName(QWidget *parent, const QString &caption, const QString &filter,
                         const QString &defaultSuffix) override;
};
