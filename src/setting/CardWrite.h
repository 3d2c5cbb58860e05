#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class MsgBox;
class SharedState;

/// What card write needs from whoever starts it.
struct CardWriteHooks
{
    /// The slot test: finds the card slot's drive, checks it is ready and small enough, and records
    /// its sizes in the state. False when the slot is not ready.
    std::function<bool()> slotTest;
    /// Shows the sentence files that are missing from the project's folder (the error list).
    std::function<void(const QStringList &missing)> showMissingFiles;
    /// Called before each sentence file is copied, with `done` of `count` already on the card, and
    /// once more with an empty name when all `count` are (not when there are none).
    std::function<void(const QString &fileName, int done, int count)> progress;
    /// Called for each file that card write goes past without putting it on the card: missing
    /// from the project's folder, refused by the MP2 check, too large, or a read-only copy the
    /// operator chose to keep.
    std::function<void(const QString &fileName)> skipped;
};

/// Puts the project (Setting) on the card: the control file into the card's "CONTENTS" folder,
/// the test tone when the surveillance switch is on, then the sentence files after a free-space
/// test measured once the control file and the tone are on the card. Every file is written beside
/// its place, synced, renamed over the old one and read back from the card itself, never through a
/// link, so a failure leaves each file old or new but whole and is reported with the file's name
/// and the reason. True when it went through all sentences; false when it stopped.
bool WriteCard(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks, bool announceCompletion);

/// The text a progress window shows for a call of the progress hook: the file being written with
/// its number, "HELLO.MP2 (1 / 2)", and at the end the count alone, "(2 / 2)".
QString cardWriteProgressText(const QString &fileName, int done, int count);

/// True when nothing can be written to the card in the slot: the card is mounted read-only (as a
/// card with its lock switch set is) or its control file carries the read-only attribute. Checked
/// before anything is asked, as no answer could make the write go through.
bool cardIsReadOnly(const SharedState &state);
QString cardReadOnlyMessage();

/// Copies a sentence file to the card. False, without copying, when a file of that name is there
/// and read-only; also false (with `error`) when the copy fails.
bool CopySentenceFile(const QString &source, const QString &destination, QString &error);
