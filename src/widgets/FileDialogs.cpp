#include "widgets/FileDialogs.h"

#include <QDir>
#include <QFileDialog>

QString QtFileDialogs::openFileName(QWidget *parent, const QString &caption, const QString &filter)
{
    QFileDialog dialog(parent, caption, QString(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return QDir::toNativeSeparators(dialog.selectedFiles().first());
}

QStringList QtFileDialogs::openFileNames(QWidget *parent, const QString &caption, const QString &filter)
{
    QFileDialog dialog(parent, caption, QString(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    if (dialog.exec() != QDialog::Accepted)
        return QStringList();
    QStringList files;
    for (const QString &file : dialog.selectedFiles())
        files << QDir::toNativeSeparators(file);
    return files;
}

QString QtFileDialogs::saveFileName(QWidget *parent, const QString &caption, const QString &filter,
                                    const QString &defaultSuffix)
{
    QFileDialog dialog(parent, caption, QString(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(defaultSuffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return QDir::toNativeSeparators(dialog.selectedFiles().first());
}
