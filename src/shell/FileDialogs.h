#pragma once

#include <QString>

class QWidget;

/// The system's open, save and folder dialogs. An empty answer means the operator cancelled.
/// Tests put a scripted implementation in its place.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    /// `filter` in Qt's form: "Setting file (*.stf);;Card control file (DQ480.csv)".
    virtual QString openFileName(QWidget *parent, const QString &caption, const QString &filter) = 0;

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
    QString saveFileName(QWidget *parent, const QString &caption, const QString &filter,
                         const QString &defaultSuffix) override;
};
