#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QListWidget;
class QListWidgetItem;

/// Chooses the folder of the sentence files: a drive list, a folder list and the folder's files.
/// OK leaves the chosen folder (without trailing separator) in chosenFolder(); Cancel puts it back
/// to the starting folder.
class frmSetPath : public QDialog
{
    Q_OBJECT

public:
    frmSetPath(const QString &startFolder, QWidget *parent);

    QString chosenFolder() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void Drive1_Change(int index);
    void Dir1_DblClick(QListWidgetItem *item);
    void cmdOK_Click();
    void cmdCancel_Click();

private:
    void showFolder(const QString &folder);

    QString m_startFolder;
    QString m_folder;
    QComboBox *m_drives;
    QLabel *m_folderLabel;
    QListWidget *m_dirs;
    QListWidget *m_files;
};
