#include "sentence/dlgCaPc.h"
#include "setting/OperatorMessages.h"
#include "widgets/ShownFileName.h"

#include "sentence/PathLabelText.h"
#include "setting/FileCopy.h"
#include "setting/MsgBox.h"
#include "setting/PathText.h"
#include "setting/SentenceFolderIndex.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "widgets/DialogLayout.h"
#include "widgets/NumberBox.h"
#include "widgets/frmSetPath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSet>
#include <QVBoxLayout>

namespace {

QString copyComplete()
{
    return QCoreApplication::translate("dlgCaPc", "File copy complete");
}

QGroupBox *copyGroup(const QString &title, const QString &caption, QLineEdit *input, QPushButton *start,
                     QWidget *parent)
{
    auto *group = new QGroupBox(title, parent);
    auto *label = new QLabel(caption, group);
    label->setBuddy(input);
    // Both groups' captions take the longer one's width, so the two inputs line up.
    label->setMinimumWidth(
        label->fontMetrics().horizontalAdvance(QCoreApplication::translate("dlgCaPc", "Folder name")));
    auto *row = new QHBoxLayout(group);
    row->addWidget(label);
    row->addWidget(input, 1);
    row->addWidget(start);
    return group;
}

} // namespace

dlgCaPc::dlgCaPc(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
{
    setObjectName(QStringLiteral("dlgCaPc"));
    setWindowModality(Qt::ApplicationModal);
    m_lblCaPcPath = new QLabel(this);
    m_lblCaPcPath->setObjectName(QStringLiteral("lblCaPcPath"));
    m_txtCaPcAllInp = namedLineEdit("txtCaPcAllInp", this);
    m_txtCaPcSelInp = namedLineEdit("txtCaPcSelInp", this);
    auto *cmdCaPcAll = namedButton(tr("Start"), "cmdCaPcAll", this);
    cmdCaPcAll->setAccessibleName(tr("Start copying all sentences"));
    auto *cmdCaPcSel = namedButton(tr("Start"), "cmdCaPcSel", this);
    cmdCaPcSel->setAccessibleName(tr("Start copying the selected sentence"));
    auto *cmdCaPcDir = namedButton(tr("Path Set"), "cmdCaPcDir", this);
    auto *cmdCaPcClose = namedButton(tr("Exit"), "cmdCaPcClose", this);
    QGroupBox *fraCaPcAll
        = copyGroup(tr("All sentence"), tr("Folder name"), m_txtCaPcAllInp, cmdCaPcAll, this);
    fraCaPcAll->setObjectName(QStringLiteral("fraCaPcAll"));
    QGroupBox *fraCaPcSel
        = copyGroup(tr("Sentence selection"), tr("Filename"), m_txtCaPcSelInp, cmdCaPcSel, this);
    fraCaPcSel->setObjectName(QStringLiteral("fraCaPcSel"));

    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(m_lblCaPcPath, 1);
    pathRow->addWidget(cmdCaPcDir);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(pathRow);
    layout->addWidget(fraCaPcAll);
    layout->addWidget(fraCaPcSel);
    layout->addLayout(buttonRow({cmdCaPcClose}));
    setMinimumWidth(460);
    chainTabOrder({cmdCaPcDir, m_txtCaPcAllInp, cmdCaPcAll, m_txtCaPcSelInp, cmdCaPcSel, cmdCaPcClose});

    connect(cmdCaPcAll, &QPushButton::clicked, this, &dlgCaPc::cmdCaPcAll_Click);
    connect(cmdCaPcSel, &QPushButton::clicked, this, &dlgCaPc::cmdCaPcSel_Click);
    connect(cmdCaPcDir, &QPushButton::clicked, this, &dlgCaPc::cmdCaPcDir_Click);
    connect(cmdCaPcClose, &QPushButton::clicked, this, &dlgCaPc::cmdCaPcClose_Click);
    connect(m_txtCaPcAllInp, &QLineEdit::editingFinished, this, &dlgCaPc::txtCaPcAllInp_LostFocus);
    connect(m_txtCaPcSelInp, &QLineEdit::textEdited, this, &dlgCaPc::txtCaPcSelInp_Change);
    // The card it copies from is gone: nothing is left to copy, so the dialog closes by itself.
    connect(&context.state, &SharedState::cardSlotChanged, this, [this] {
        if (!m_context.state.CardSlotValid)
            reject();
    });
    Form_Load();
}

void dlgCaPc::Form_Load()
{
    setWindowTitle(tr("Card creation Sentence data copy Card -> PC : ")
                   + shownFileName(m_context.state.ProjectFileName));
    // Copies go to the sentence folder until the operator chooses another.
    m_destination = withTrailingSeparator(m_context.state.SentencePath);
    showDestination();
}

void dlgCaPc::showDestination()
{
    m_lblCaPcPath->setText(pathLabelText(m_destination));
    m_lblCaPcPath->setToolTip(m_destination);
}

QString dlgCaPc::cardSentenceFolder() const
{
    return joinPath(m_context.state.CardSlot, QStringLiteral("CONTENTS"));
}

bool dlgCaPc::txtCaPcAllInp_LostFocus()
{
    if (IsValidFileNameText(m_txtCaPcAllInp->text()))
        return true;
    m_context.msgBox.show(incorrectValueMessage());
    m_txtCaPcAllInp->clear();
    return false;
}

void dlgCaPc::txtCaPcSelInp_Change()
{
    if (IsValidFileNameText(m_txtCaPcSelInp->text()))
        return;
    m_context.msgBox.show(incorrectValueMessage());
    m_txtCaPcSelInp->clear();
}

void dlgCaPc::cmdCaPcDir_Click()
{
    frmSetPath dialog(m_destination, this);
    if (dialog.exec() == QDialog::Accepted)
        m_destination = withTrailingSeparator(dialog.chosenFolder());
    showDestination();
}

bool dlgCaPc::copyOne(const QString &source, const QString &destination)
{
    QString error;
    if (copyFileReplacing(source, destination, error))
        return true;
    m_context.msgBox.show(tr("The copy stopped.\n") + error, MsgBox::Buttons::Ok, MsgBox::Icon::Critical);
    return false;
}

void dlgCaPc::cmdCaPcAll_Click()
{
    if (!txtCaPcAllInp_LostFocus())
        return;
    const QString destination = withTrailingSeparator(m_destination + m_txtCaPcAllInp->text());
    if (!QDir().mkpath(destination)) {
        m_context.msgBox.show(tr("Cannot create the folder %1").arg(destination), MsgBox::Buttons::Ok,
                              MsgBox::Icon::Critical);
        return;
    }
    // Names are 8.3 names, one file whatever their case: "rain.mp2" is the "RAIN.MP2" already here.
    const SentenceFolderIndex present(destination);
    QSet<QString> copied;
    const auto alreadyThere = [&](const QString &name) {
        return !present.find(name).isEmpty() || copied.contains(name.toCaseFolded());
    };
    // Kept on purpose: this copy takes the control file from the card's root, not from CONTENTS.
    const QString controlFile = joinPath(m_context.state.CardSlot, QStringLiteral("DQ480.CSV"));
    if (QFileInfo(controlFile).isFile() && !alreadyThere(QStringLiteral("DQ480.CSV"))
        && !copyOne(controlFile, destination + QStringLiteral("DQ480.CSV")))
        return;
    const QDir card(cardSentenceFolder());
    if (card.exists()) {
        for (const QString &name : card.entryList(QDir::Files, QDir::Name)) {
            // Exactly ".MP2" or ".mp2": other spellings have never been taken.
            if (!name.endsWith(QLatin1String(".MP2")) && !name.endsWith(QLatin1String(".mp2")))
                continue;
            if (alreadyThere(name))
                continue;
            if (!copyOne(card.filePath(name), destination + name))
                return;
            copied.insert(name.toCaseFolded());
        }
    }
    m_context.msgBox.show(copyComplete());
}

void dlgCaPc::cmdCaPcSel_Click()
{
    const QString name = m_txtCaPcSelInp->text();
    const QString upper = name.toUpper();
    const bool sentence = upper.endsWith(QLatin1String(".MP2"));
    if (!sentence && !upper.endsWith(QLatin1String(".CSV"))) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtCaPcSelInp->clear();
        return;
    }
    const QString sourceFolder = sentence ? cardSentenceFolder() : m_context.state.CardSlot;
    const QString found = SentenceFolderIndex(sourceFolder).find(name);
    const QString source = found.isEmpty() ? joinPath(sourceFolder, name) : found;
    if (!QDir(cardSentenceFolder()).exists() || !QFileInfo(source).isFile()) {
        m_context.msgBox.show(contentsOfEditQuestion() + QLatin1Char('\n')
                              + tr("%1 is not on the card.").arg(source));
        return;
    }
    if (!SentenceFolderIndex(m_destination).find(name).isEmpty()) {
        m_context.msgBox.show(tr("Filesystem Error  File:") + name);
        return;
    }
    if (!copyOne(source, m_destination + name))
        return;
    m_txtCaPcSelInp->clear();
    m_context.msgBox.show(copyComplete());
}

void dlgCaPc::cmdCaPcClose_Click()
{
    accept();
}
