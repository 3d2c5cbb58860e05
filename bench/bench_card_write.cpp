// Card write of 300 sentence files of about 60 KB onto a small tmpfs card, against a plain copy
// of the same files followed by sync. Needs root to mount the tmpfs; otherwise it uses a folder.

#include "CardWrite.h"
#include "ScriptedMsgBox.h"
#include "TestProjects.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <sys/mount.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int Files = 300;
constexpr int FileBytes = 60 * 1024;
constexpr int Rounds = 5;

void clearCard(const QString &card)
{
    QDir(card + QStringLiteral("/CONTENTS")).removeRecursively();
    QDir(card + QStringLiteral("/plain")).removeRecursively();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir home;
    QTemporaryDir cardDir;
    const QString card = cardDir.path();
    const bool mounted = geteuid() == 0
        && ::mount("tmpfs", QFile::encodeName(card).constData(), "tmpfs", 0, "size=64m") == 0;

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

    std::vector<double> cardWrite, plainCopy;
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
            QFile::copy(source, card + QStringLiteral("/plain/") + QFileInfo(source).fileName());
        ::sync();
        plainCopy.push_back(timer.nsecsElapsed() / 1e6);
    }
    if (mounted)
        ::umount(QFile::encodeName(card).constData());
    const double write = median(cardWrite);
    const double copy = median(plainCopy);
    std::printf("card: %s\n", mounted ? "64 MiB tmpfs" : "a folder (not root: no tmpfs)");
    std::printf("card write (with sync and read-back): %.1f ms\n", write);
    std::printf("plain copy + sync:                    %.1f ms\n", copy);
    std::printf("ratio: %.2f\n", write / copy);
    return 0;
}
