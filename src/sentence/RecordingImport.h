#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class QWidget;

/// True for a recording the sentence table imports rather than copies when dropped: WAV, AIFF,
/// FLAC, OGG, Opus or MP3, by its name's ending. A dropped MP2 is copied as it is; card write
/// checks it.
bool isRecordingToImport(const QString &path);

/// The name patterns of what "Import..." takes, for a file dialog's filter, "*.wav *.WAV ...": the
/// recordings and MP2 files too (chosen there, an MP2 is made into a standard sentence at the
/// matched loudness, which also mends one the device refuses). Both cases, as file systems that
/// tell them apart hold either.
QString recordingNamePatterns();

/// One recording to make into a sentence.
struct RecordingJob
{
    QString input;
    QString output; // full path of the sentence file
    QString error; // why it failed; empty when it was written
};

/// Imports the recordings at the default quality and loudness, silence at their ends cut when
/// `trimSilence`, on as many threads as the PC has cores, while a progress dialog with a Cancel
/// button shows. Cancel stops every import and removes the sentences this run already wrote; then
/// false. Each job's `error` tells how it went.
bool runRecordingImports(std::vector<RecordingJob> &jobs, QWidget *parent, bool trimSilence = false);
