// Card write of 100 sentence files (or as many as the first argument says) of about 60 KB (each synced,
// renamed into place and read back from the card past the PC's cache) against a plain copy of the same files
// followed by sync, both onto the same FAT16 card image mounted through fusefat. Needs root, mkfs.fat and
// fusefat; otherwise it uses a tmpfs, or a folder.

#include "setting/CardWrite.h"
#include "support/Median.h"
#include "support/ScriptedMsgBox.h"
#include "support/TestMounts.h"
#include "support/TestProjects.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <unistd.h>
#include <vector>

namespace {

constexpr int FileBytes = 60 * 1024;
constexpr int Rounds = 9;

void clearCard(const QString &card)
{
    QDir(card + QStringLiteral("/CONTENTS")).removeRecursively();
    QDir(card + QStringLiteral("/plain")).removeRecursively();
}

// What a file manager's copy does: the file written straight to its name, nothing more.
// (QFile::copy is no plain copy: it goes through a temporary name.)
void plainCopy(const QString &source, const QString &destination)
{
    QFile in(source);
    QFile out(destination);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)
        || out.write(in.readAll()) != in.size())
        std::fprintf(stderr, "plain copy failed: %s\n", qPrintable(destination));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int Files = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 100;
    QTemporaryDir home;
    QTemporaryDir cardDir;
    QString why;
    std::unique_ptr<TestMount> mount = TestMount::fat16(64 * 1024, why);
    QString kind = QStringLiteral("64 MiB FAT16 image through fusefat");
    if (!mount) {
        std::fprintf(stderr, "no FAT card: %s\n", qPrintable(why));
        mount = TestMount::tmpfs("64m", why);
        kind = mount ? QStringLiteral("64 MiB tmpfs") : QStringLiteral("a folder (%1)").arg(why);
    }
    const QString card = mount ? mount->path() : cardDir.path();

    auto state = makeTestState(home.path());
    state->Setting.ProjectName = QStringLiteral("Bench");
    state->Setting.CardAttribute = static_cast<qint16>(state->Setting.CardAttribute | 0x40);
    state->SurveillanceFile = false;
    QDir(home.path()).mkpath(QStringLiteral("Bench"));
    QByteArray bytes(FileBytes, '\x55');
    bytes.replace(0, 4, QByteArray("\xFF\xFD\x48\xC4", 4));
    QStringList sources;
    for (int i = 0; i < Files; ++i) {
        const QString name = QStringLiteral("S%1.MP2").arg(i, 4, 10, QLatin1Char('0'));
        QFile file(home.filePath(QStringLiteral("Bench/") + name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        sources << file.fileName();
        state->Setting.SentenceFileName[i] = name;
        state->Setting.SentenceControl[i] = QStringLiteral("A%1").arg(i + 1, 3, 10, QLatin1Char('0'));
        state->Setting.ProgramSort[i] = static_cast<qint16>(i + 1);
    }
    state->CardSlot = card;
    ScriptedMsgBox msgBox;
    msgBox.answerOkBoxes = true;
    CardWriteHooks hooks;
    hooks.slotTest = [&] {
        state->CardFreeSpace = QString::number(qint64(64) * 1024 * 1024);
        return true;
    };

    std::vector<double> cardWrite, plainCopies;
    for (int round = 0; round < Rounds; ++round) {
        clearCard(card);
        QElapsedTimer timer;
        timer.start();
        if (!WriteCard(*state, msgBox, hooks, false))
            std::fprintf(stderr, "card write failed: %s\n", qPrintable(msgBox.shown.join(QLatin1Char('|'))));
        cardWrite.push_back(timer.nsecsElapsed() / 1e6);

        clearCard(card);
        timer.restart();
        QDir(card).mkpath(QStringLiteral("plain"));
        for (const QString &source : sources)
            plainCopy(source, card + QStringLiteral("/plain/") + QFileInfo(source).fileName());
        ::sync();
        plainCopies.push_back(timer.nsecsElapsed() / 1e6);
    }
    mount.reset();
    const double write = median(cardWrite);
    const double copy = median(plainCopies);
    std::printf("card: %s, %d files of %d KB, median of %d rounds\n", qPrintable(kind), Files,
                FileBytes / 1024, Rounds);
    std::printf("card write (sync, rename, uncached read-back): %.1f ms\n", write);
    std::printf("plain copy + sync:                             %.1f ms\n", copy);
    std::printf("ratio: %.2f\n", write / copy);
    return 0;
}
