#pragma once

#include "program/ProgramFieldRules.h"
#include "widgets/AppContext.h"
#include "widgets/CloseOnce.h"

#include <QPointer>
#include <QWidget>

class ProgramPlayer;
class ProgramWindowTable;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMdiArea;
class QPushButton;
class QRadioButton;
class QScrollBar;
class frmStep;

/// The program edit window of one program: name, playback method, repeat count, interval and its
/// unit, interval busy output and output level, and the way to its steps. It edits SettingBuffer;
/// Apply and OK commit. It holds its slot in the program window table while open.
class frmProg : public QWidget
{
    Q_OBJECT

public:
    frmProg(AppContext &context, ProgramWindowTable &table, int slot, int programNumber, QMdiArea *mdiArea,
            QWidget *parent = nullptr);
    ~frmProg() override;

    int programNumber() const { return m_programNumber; }
    /// The current method's name, which the step window shows in its caption.
    QString methodName() const;
    frmStep *stepWindow() const;
    /// Shows the program as SettingBuffer holds it, with nothing left to apply; for when the
    /// working copy was reverted behind the window's back.
    void showWorkingCopy();
    /// Shows how long one pass of the program's steps plays.
    void showPlayingTime();

signals:
    /// The operator chose another method; `name` is its name.
    void methodChanged(const QString &name);

public slots:
    void cmbPrgMethod_Click();
    void cmbPrgMethod_LostFocus();
    void optPrgInt_Click(int index);
    void vscInt_Change(int value);
    bool txtPrgInt_LostFocus();
    void vscNo_Change(int value);
    bool txtPrgNo_LostFocus();
    bool txtAutoVol_LostFocus();
    void vsAutoVol_Change(int value);
    void optPrgBusy_Click(int index);
    void txtProgName_LostFocus();
    void cmdProgSave_Click();
    void cmdProgOk_Click();
    void cmdProgClose_Click();
    void cmdProgStep_Click();
    void cmdPrint_Click();
    /// Plays the working copy's steps on the PC as the device will.
    void cmdProgPlay_Click();
    void cmdProgStop_Click();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildControls();
    void Form_Load();
    bool Form_Unload();
    void closeFrame();
    void setModified();
    void setIntervalCaption(const QString &caption);
    void txtProgName_Change(const QString &text);
    void showInterval(const ProgramFieldRules::Interval &shown);
    bool minutesSelected() const;
    bool isEndless() const;
    qint32 &option();
    void selectUnit(int index);
    void redisplayInterval();
    void showRepeatCount(const ProgramFieldRules::RepeatCount &shown);
    void showLevel(int level);
    void setBar(QScrollBar *bar, int value);
    void setUnitBarRange(bool minutes);
    void showPlaying(int step, int pass, double seconds);
    void playFinished(const QString &problem);
    /// The status line: what plays now (or how the playing ended), then the steps skipped.
    void showPlayStatus(const QString &now);

    AppContext &m_context;
    QPointer<ProgramWindowTable> m_table;
    int m_slot;
    int m_programNumber;
    int m_p; // program index 0-63
    QMdiArea *m_mdiArea;
    int m_method = 0;
    CloseOnce m_closeOnce;
    bool m_unloading = false;
    QPointer<frmStep> m_stepWindow;

    QLabel *m_lblProgNo = nullptr;
    QLineEdit *m_txtProgName = nullptr;
    QString m_validProgName; // the name as last typed without a refused character
    QComboBox *m_cmbPrgMethod = nullptr;
    QGroupBox *m_fraPrg1 = nullptr;
    QLabel *m_lblPrgNo = nullptr;
    QLineEdit *m_txtPrgNo = nullptr;
    QScrollBar *m_vscNo = nullptr;
    QGroupBox *m_fraPrg2 = nullptr;
    QLabel *m_lblPrgInt = nullptr;
    QLineEdit *m_txtPrgInt = nullptr;
    QScrollBar *m_vscInt = nullptr;
    QRadioButton *m_optPrgInt[2] = {};
    QGroupBox *m_fraPrg3 = nullptr;
    QRadioButton *m_optPrgBusy[2] = {};
    QLineEdit *m_txtAutoVol = nullptr;
    QScrollBar *m_vsAutoVol = nullptr;
    QPushButton *m_cmdProgStep = nullptr;
    QPushButton *m_cmdProgSave = nullptr;
    QLabel *m_lblPrgTime = nullptr;
    QLabel *m_lblPrgPlayed = nullptr;
    QLabel *m_lblPrgStatus = nullptr;
    QPushButton *m_cmdProgPlay = nullptr;
    QPushButton *m_cmdProgStop = nullptr;
    ProgramPlayer *m_player = nullptr;
    int m_playingStep = -1;
    int m_playingPass = 0;
    bool m_stopPressed = false;
};
