#pragma once

#include "setting/SettingData.h"
#include "widgets/AppContext.h"
#include "widgets/CloseOnce.h"

#include <QWidget>

#include <array>

class BoxColumns;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

/// The steps of one program: 128 boxes in columns of eight, each empty or holding a sentence
/// ("A012") or a wait ("M005", "M1.5"). Owned by its program window; edits SettingBuffer, and
/// Apply and OK commit the steps.
class frmStep : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Steps = 128;
    static constexpr int StepsPerColumn = 8;
    static constexpr int VisibleColumns = 4;

    /// `methodName`: the method its program window shows, named in the caption.
    frmStep(AppContext &context, const QString &methodName, QWidget *parent = nullptr);

    /// Shows the steps as SettingBuffer holds them, with nothing left to apply; for when they
    /// were replaced behind the window's back.
    void showWorkingCopy();
    /// Closes the window (with its frame inside the main window).
    void closeFrame();
    QLineEdit *box(int index) const { return m_boxes[index]; }
    int currentSlot() const { return m_current; }
    /// Marks the box of the step being played on the PC (0-127; -1 for none).
    void showPlayingStep(int step);
    int playingStep() const { return m_playingStep; }

public slots:
    /// The program window changed the method: the caption names the new one.
    void showMethod(const QString &methodName);
    bool txtStpIdx_LostFocus(int index);
    void hscStep_Change(int value);
    void cmdStpIns_Click();
    void cmdStpDelte_Click();
    void cmdStpMov_Click();
    void cmdStpSave_Click();
    void cmdStepOk_Click();
    void cmdStpClose_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void Form_Load();
    bool Form_Unload();
    void refreshCaption();
    QWidget *buildStepFrame();
    void showStoredSteps();
    void showStep(int index, const QString &text);
    void setModified();
    void focusBox(int index);
    void bringColumnIntoView(int index);
    void applyDefaultStepRule();
    int sentenceLimit() const;
    ProgramSteps &steps();

    AppContext &m_context;
    QString m_methodName;
    int m_p = 0;
    int m_current = 0;
    int m_playingStep = -1;
    CloseOnce m_closeOnce;
    std::array<QLineEdit *, Steps> m_boxes {};
    BoxColumns *m_columns = nullptr;
    QScrollBar *m_hscStep = nullptr;
    QPushButton *m_cmdStpSave = nullptr;
};
