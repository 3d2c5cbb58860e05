#include "sentence/dlgSentenceNames.h"

#include "audio/SentenceName.h"
#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "widgets/DialogLayout.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

// What the box holds, as the name the sentence file gets.
QString fileNameOf(const QLineEdit *box)
{
    return sentenceFileName(box->text().trimmed());
}

} // namespace

QString sentenceNameRule()
{
    return dlgSentenceNames::tr(
        "At most 8 characters before .MP2, no blanks, full stops or \\ / : * ? < > | , "
        "\" ;, not a Windows device name such as CON, and not the name of another entry.");
}

dlgSentenceNames::dlgSentenceNames(const std::vector<Offer> &offers, const QStringList &taken, MsgBox &msgBox,
                                   QWidget *parent)
    : QDialog(parent)
    , m_msgBox(msgBox)
    , m_taken(taken)
{
    setObjectName(QStringLiteral("dlgSentenceNames"));
    setWindowTitle(tr("Sentence names"));
    auto *intro = new QLabel(
        tr("These recordings need another sentence name. %1 The names below fit; change them if you like.")
            .arg(sentenceNameRule()),
        this);
    intro->setWordWrap(true);

    auto *rows = new QWidget;
    auto *grid = new QGridLayout(rows);
    int row = 0;
    for (const Offer &offer : offers) {
        auto *recording = new QLabel(QFileInfo(offer.recording).fileName(), rows);
        recording->setToolTip(offer.recording);
        auto *box = new QLineEdit(QFileInfo(offer.name).completeBaseName(), rows);
        box->setObjectName(QStringLiteral("txtSentenceName_%1").arg(row));
        box->setMaxLength(LongestSentenceName);
        recording->setBuddy(box);
        grid->addWidget(recording, row, 0);
        grid->addWidget(box, row, 1);
        grid->addWidget(new QLabel(QStringLiteral(".MP2"), rows), row, 2);
        m_boxes.push_back(box);
        ++row;
    }
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(row, 1);
    auto *scroll = new QScrollArea(this);
    scroll->setWidget(rows);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);

    auto *ok = namedButton(tr("OK"), "cmdSentenceNamesOk", this);
    auto *cancel = namedButton(tr("Cancel"), "cmdSentenceNamesCancel", this);
    connect(ok, &QPushButton::clicked, this, &dlgSentenceNames::cmdSentenceNamesOk_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(scroll, 1);
    layout->addLayout(buttonRow({ok, cancel}));
    resize(520, std::min(160 + 32 * int(offers.size()), 520));
    if (!m_boxes.empty())
        m_boxes.front()->setFocus();
}

QStringList dlgSentenceNames::chosenNames() const
{
    QStringList names;
    for (const QLineEdit *box : m_boxes)
        names << fileNameOf(box);
    return names;
}

void dlgSentenceNames::cmdSentenceNamesOk_Click()
{
    QStringList given = m_taken;
    for (QLineEdit *box : m_boxes) {
        const QString name = fileNameOf(box);
        if (!isFittingSentenceName(box->text().trimmed()) || given.contains(name, Qt::CaseInsensitive)) {
            m_msgBox.show(incorrectValueMessage());
            box->setFocus();
            box->selectAll();
            return;
        }
        given << name;
    }
    accept();
}
