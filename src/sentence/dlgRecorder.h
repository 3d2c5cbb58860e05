#pragma once

#include "audio/SoundDevices.h"
#include "widgets/AppContext.h"

#include <QDialog>
#include <QStringList>

#include <functional>

class LevelMeter;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class SentencePlayer;
class TakeRecorder;

/// Records a sentence at the PC for one entry of the sentence table: the input, a live level meter,
/// Record and Stop with the time recorded, Play to hear the take, and the sentence's name. OK hands
/// the take on to be made into a sentence and entered; Cancel leaves nothing behind.
class dlgRecorder : public QDialog
{
    Q_OBJECT

public:
    /// Makes the sentence `name` ("TAKE.MP2") of the take at `take` and enters it; true once entered.
    using Enter = std::function<bool(const QString &take, const QString &name)>;

    /// `taken` holds the sentence names other entries keep; the take is recorded in `takePath`.
    dlgRecorder(AppContext &context, int entry, const QStringList &taken, const QString &takePath,
                Enter enter, QWidget *parent);
    ~dlgRecorder() override;

    TakeRecorder &recorder() const { return *m_recorder; }

public slots:
    void cmdRecRecord_Click();
    void cmdRecStop_Click();
    void cmdRecPlay_Click();
    void cmdRecOk_Click();
    void cmdRecCancel_Click();

protected:
    void done(int result) override;

private:
    void listInputs();
    void takeFinished(const QString &message);
    void showState();
    void showTime(double seconds);

    AppContext &m_context;
    QStringList m_taken;
    Enter m_enter;
    QList<SoundInput> m_inputs;
    QString m_inputsError;
    TakeRecorder *m_recorder = nullptr;
    SentencePlayer *m_player = nullptr;
    QComboBox *m_cmbRecInput = nullptr;
    LevelMeter *m_lvlRecInput = nullptr;
    QPushButton *m_cmdRecRecord = nullptr;
    QPushButton *m_cmdRecStop = nullptr;
    QLabel *m_lblRecTime = nullptr;
    QPushButton *m_cmdRecPlay = nullptr;
    QLineEdit *m_txtRecName = nullptr;
    QPushButton *m_cmdRecOk = nullptr;
};
