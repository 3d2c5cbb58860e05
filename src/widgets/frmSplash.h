#pragma once

#include <QDialog>

class QLabel;

/// The start-up window: title and version over the main window until the timer, a click or a key
/// closes it.
class frmSplash : public QDialog
{
    Q_OBJECT

public:
    explicit frmSplash(QWidget *mainWindow);

    /// Centred over the main window, then raised by 1000 twips.
    void placeOver(const QWidget *mainWindow);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLabel *m_title;
    QLabel *m_version;
};
