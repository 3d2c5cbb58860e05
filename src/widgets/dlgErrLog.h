#pragma once

#include <QDialog>

class QLabel;
class QListWidget;
class SharedState;

/// Lists the sentence files that the project names but that are not in its sentence folder.
class dlgErrLog : public QDialog
{
    Q_OBJECT

public:
    dlgErrLog(const SharedState &state, QWidget *parent);

private:
    void Form_Load(const SharedState &state);

    QListWidget *m_listErr;
    QLabel *m_count;
};
