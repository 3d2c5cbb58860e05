#pragma once

#include "mainwindow/MenuEntries.h"
#include "platform/CardSlotDetection.h"
#include "print/PrintOut.h"
#include "widgets/AppContext.h"

#include <QMainWindow>
#include <QPointer>

#include <array>

class ProjectCommands;
class QAction;
class QLabel;
class QMdiArea;
class QMenu;
class QTimer;
class SingleInstance;
class frmEdit;
class frmSplash;

/// The frame of the program: menus, toolbar, status bar and the area the project's windows live in.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    static constexpr int CardSlotEntries = 10;

    explicit frmMain(AppContext &context);
    ~frmMain() override;

    /// Start-up. False when another copy of the program is running: the caller ends the program.
    bool MDIForm_Load(SingleInstance &instance);

    QMdiArea *mdiArea() const { return m_mdiArea; }
    ProjectCommands &projectCommands() const { return *m_projectCommands; }
    /// The open project's card edit window, or null.
    frmEdit *editWindow() const;

    /// File > Open with the given file instead of the open dialog's answer (a file named on the
    /// command line or double-clicked in a file manager).
    void openProjectFile(const QString &path);

    /// Shows or hides the menu items and toolbar buttons that need an open project.
    void setProjectMenusVisible(bool visible);

public slots:
    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSave_as_Click();
    void mnuCardWrite_Click();
    void mnuInfCopy_Click();
    void mnuAllInfo_Click();
    void mnuAllProgram_Click();
    void mnuExit_Click();
    void mnuSvSet_Click();
    void mnuHelp_Click();
    void Timer1_Timer();
    void mnuCard_Click(int index);
    /// A card came or went (the system's device notification).
    void SysInfo1_DeviceChange();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createMenus();
    void createToolbar();
    void createStatusBar();
    QAction *addAction(QMenu *menu, const char *objectName, const QString &caption, void (frmMain::*slot)());

    /// Unload: asks about unapplied and unsaved work; false when the operator keeps the program.
    bool MDIForm_Unload();
    bool DetectCardSlots();
    void showCardSlotMenu();
    void refreshCardButtons();
    void unloadSplash();
    void showProjectWindow();
    /// Open's steps around reading: only without an open project, from new-project values.
    template<typename Read>
    void openWith(Read read);
    void showPrintSetting(PrintKind kind);
    void refreshFileDisplays();
    void refreshSurveillanceCheck();

    AppContext &m_context;
    ProjectCommands *m_projectCommands;
    QMdiArea *m_mdiArea;
    QTimer *m_timer1;
    QPointer<frmSplash> m_splash;
    QPointer<frmEdit> m_editWindow;
    QLabel *m_fileNameDisplay = nullptr;
    QLabel *m_folderDisplay = nullptr;
    QAction *m_mnuSvSet = nullptr;
    QAction *m_mnuCardWrite = nullptr;
    QList<QAction *> m_projectMenuItems;
    QList<QAction *> m_projectToolButtons;
    MenuEntries m_fileEntries;
    MenuEntries m_cardSlotEntries;
    std::array<QAction *, CardSlotEntries> m_mnuCard {};
    CardSlotMenu m_cardMenu;
    CardSlotDetection m_detection;
    QLabel *m_cardSlotDisplay = nullptr;
};
