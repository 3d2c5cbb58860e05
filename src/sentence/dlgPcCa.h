#pragma once

#include "setting/SettingData.h"
#include "widgets/AppContext.h"
#include "widgets/CloseOnce.h"

#include <QDialog>

#include <array>
#include <vector>

class BoxColumns;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;
class SentencePlayer;
class SentenceTimes;
struct RecordingJob;

/// Builds the sentence table: which MP2 file is sentence 1, 2, 3... Names are typed, dropped from
/// the file manager, or taken from the sentence folder as a whole. Chosen files wait in the work
/// folder; Apply and OK commit the table and store the files in the project's sentence folder.
class dlgPcCa : public QDialog
{
    Q_OBJECT

public:
    static constexpr int Rows = 16;
    static constexpr int VisibleColumns = 4;

    dlgPcCa(AppContext &context, QWidget *parent);
    ~dlgPcCa() override;

    QLineEdit *box(int index) const { return m_boxes[index]; }

public slots:
    void TxtPcCa_Change(int index);
    bool TxtPcCa_LostFocus(int index);
    void TxtPcCa_KeyDown_Enter(int index);
    /// A file dropped on box `index` (its full path).
    void TxtPcCa_OLEDragDrop(int index, const QString &path);
    void cmdPcCaAll_Click();
    void cmdPcCaIns_Click();
    void cmdPcCaDel_Click();
    void cmdPcCaMov_Click();
    void cmdsentPath_Click();
    void cmdPcCaApp_Click();
    void cmdPcCaOk_Click();
    void cmdPcCaClose_Click();
    void hscCaPc_Change(int value);
    /// Plays the current box's sentence on the PC.
    void cmdPcCaPlay_Click();
    /// Chooses recordings in a file dialog and imports them from the current box on, as a drop does.
    void cmdPcCaImport_Click();
    /// Records a sentence at the PC into the current box.
    void cmdPcCaRecord_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void done(int result) override;

private:
    QWidget *buildEntryFrame();
    void Form_Load();
    bool Form_Unload();
    void showPath();
    void showEntries();
    void showBox(int index, const QString &text);
    void setModified();
    /// Copies a named file from the sentence folder into the work folder; says why when it cannot.
    void takeIntoWorkFolder(const QString &name);
    int indexOfBox(QObject *object) const;
    /// Makes sentences of dropped recordings and enters them from box `index` on, one box each.
    void importRecordings(int index, const QStringList &paths);
    /// Makes the sentences of `jobs` (written aside) and enters them from box `index` on, one box
    /// each, asking before entries are replaced or `leftOut` recordings left out. True when any
    /// was entered.
    bool enterImports(int index, std::vector<RecordingJob> &jobs, const QStringList &leftOut,
                      bool trimSilence);
    /// Makes the sentence `name` of a take recorded at the PC and enters it in box `index`.
    bool enterTake(int index, const QString &take, const QString &name);
    /// The sentence names that entries other than those from `first` to `last` keep.
    QStringList namesKeptOutside(int first, int last) const;
    /// Once the sentences are made, before they are entered: asks when entries would be replaced
    /// or recordings left out at the table's end, saying which recordings were refused. True to go on.
    bool confirmImport(const QStringList &refused, const QStringList &replaced, const QStringList &leftOut);
    /// Scrolls the table so that box `index` shows.
    void revealBox(int index);
    /// Shows the current box's sentence and its playing time under the table.
    void showDuration(int index);
    /// Shows the playing time of box `index`'s sentence beside it, found through `times`.
    void showBoxTime(int index, SentenceTimes &times);
    /// The same for one box whose sentence changed, its file looked for anew.
    void showBoxTime(int index);

    AppContext &m_context;
    SentenceTableSize m_table = SentenceTableSize::ofAttribute(0);
    int m_current = 0;
    CloseOnce m_closeOnce;
    std::array<QLineEdit *, SentenceTableSize::Largest> m_boxes {};
    std::array<QString, SentenceTableSize::Largest> m_checkedText {};
    BoxColumns *m_columns = nullptr;
    QScrollBar *m_hscCaPc = nullptr;
    QLabel *m_lblsentPath = nullptr;
    QPushButton *m_cmdPcCaApp = nullptr;
    QPushButton *m_cmdPcCaPlay = nullptr;
    QLabel *m_lblPcCaDuration = nullptr;
    SentencePlayer *m_player = nullptr;
};
