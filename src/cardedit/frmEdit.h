#pragma once

#include "program/ProgramWindowTable.h"
#include "widgets/AppContext.h"
#include "widgets/CloseOnce.h"

#include <QWidget>

class ProgramNumberField;
class ProjectCommands;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMdiArea;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTabWidget;
class QTimer;

/// The document window of the open project: project texts, card name, sentence count, the card
/// commands, and the choice and copy of programs.
class frmEdit : public QWidget
{
    Q_OBJECT

public:
    /// Program windows open in `mdiArea`; Save goes through `commands`.
    frmEdit(AppContext &context, ProjectCommands &commands, QMdiArea *mdiArea, QWidget *parent = nullptr);
    ~frmEdit() override;

    ProgramWindowTable &programWindows() { return *m_programWindows; }

    /// Shows the project; the owner calls it once, after connecting to the signals.
    void Form_Load();
    /// Card write on the card slot, with progress and the list of missing sentence files.
    bool WriteProjectToCard(bool announceCompletion);

signals:
    /// The main window's menu items that need a project.
    void projectMenusVisible(bool visible);
    void captionChanged(const QString &caption);
    /// The card buttons were enabled or disabled; the main window's card write follows them.
    void cardButtonsEnabled(bool enabled);

public slots:
    void Form_GotFocus();
    void optSize_Click();
    void cmdTCaProtOn_Click();
    void cmdTCaProtOff_Click();
    void cmdCaWrite_Click();
    void cmdSave_Click();
    void cmdClose_Click();
    void cmdEditApp_Click();
    void cmdTPcCa_Click();
    void cmdTCaPc_Click();
    void cmdTCaFormat_Click();
    void timCardC_Timer();
    void cmdTPrgNo_Click();
    void cmdTPrgCpy_Click();
    bool txtTPrgNo_LostFocus();
    bool txtTPrgCpy_LostFocus();
    bool txtTprgCpy2_LostFocus();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;

private:
    QWidget *buildProgramTab();
    QWidget *buildCardEditTab();
    QWidget *buildDataInformationTab();
    /// Unload: asks about pending work; false when the operator keeps the window.
    bool Form_Unload();
    void refreshFileLabels();
    void setCardButtonsEnabled(bool enabled);
    /// Takes a text that names a file or folder, or refuses it and shows the last valid one.
    void takeFileNameText(QLineEdit *edit, const QString &text, QString &lastValid, QString &target);
    /// True when the setting file's code page holds every character of the text.
    bool fitsTheFile(const QString &text) const;
    void txtTCaName_Change(const QString &text);
    void txtName_Change(const QString &text);
    void txtNo_Change(const QString &text);
    void txtExp_Change();

    AppContext &m_context;
    ProjectCommands &m_commands;
    QMdiArea *m_mdiArea;
    ProgramWindowTable *m_programWindows;
    CloseOnce m_closeOnce;

    QTabWidget *m_mainTab = nullptr;
    QLineEdit *m_txtTPrgNo = nullptr;
    QLineEdit *m_txtTPrgCpy = nullptr;
    QLineEdit *m_txtTprgCpy2 = nullptr;
    ProgramNumberField *m_prgNo = nullptr;
    ProgramNumberField *m_prgCpy = nullptr;
    ProgramNumberField *m_prgCpy2 = nullptr;
    QRadioButton *m_opt512 = nullptr;
    QRadioButton *m_opt128 = nullptr;
    QPushButton *m_cmdTCaFormat = nullptr;
    QPushButton *m_cmdTPcCa = nullptr;
    QPushButton *m_cmdTCaPc = nullptr;
    QPushButton *m_cmdCaWrite = nullptr;
    QLineEdit *m_txtTCaName = nullptr;
    QGroupBox *m_fraProtect = nullptr;
    QPushButton *m_cmdTCaProtOn = nullptr;
    QPushButton *m_cmdTCaProtOff = nullptr;
    QLabel *m_lblSlot = nullptr;
    QLabel *m_lblFileName = nullptr;
    QLabel *m_lblFileLocation = nullptr;
    QLineEdit *m_txtName = nullptr;
    QLineEdit *m_txtNo = nullptr;
    QPlainTextEdit *m_txtExp = nullptr;
    QString m_validName;
    QString m_validCardName;
    QString m_validExplanation;
    QTimer *m_timCardC = nullptr;
};
