#include "widgets/frmPjName.h"
#include "setting/OperatorMessages.h"

#include "setting/MsgBox.h"
#include "setting/PathText.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "widgets/DialogLayout.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmPjName::frmPjName(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_text(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frmPjName"));
    setWindowTitle(tr(" Project name setting"));
    auto *label = new QLabel(tr(" Please input 'Project name'"), this);
    label->setObjectName(QStringLiteral("lblPjName"));
    label->setBuddy(m_text);
    m_text->setObjectName(QStringLiteral("txtPjName"));
    m_text->setAccessibleName(tr("Please input 'Project name'"));
    auto *ok = namedButton(tr("OK"), "cmdOK", this);
    auto *cancel = namedButton(tr("Cancel"), "cmdCancel", this);

    connect(m_text, &QLineEdit::textChanged, this, &frmPjName::txtPjName_Change);
    connect(ok, &QPushButton::clicked, this, &frmPjName::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &frmPjName::cmdCancel_Click);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_text);
    layout->addLayout(buttonRow({ok, cancel}));
    setMinimumWidth(360);
}

void frmPjName::txtPjName_Change(const QString &text)
{
    // The name is written to the setting file in its code page: a character it cannot hold would
    // come back as another, and the project would lose its sentence folder.
    if (IsValidNameInCodePage(text, m_context.state.Encoding)) {
        m_lastValid = text;
        return;
    }
    m_context.msgBox.show(incorrectValueMessage());
    m_text->setText(m_lastValid);
}

void frmPjName::cmdOK_Click()
{
    const QString name = m_text->text();
    // "." or ".." would make the program's folder or its parent the sentence folder.
    if (name.isEmpty() || !IsUsableNameText(name)) {
        m_context.msgBox.show(incorrectValueMessage());
        return;
    }
    // An existing folder of that name holds another project's sentences: using it is a choice.
    if (QFileInfo(joinPath(m_context.state.AppPath, name)).isDir()
        && !m_context.msgBox.confirm(tr(" Set folder of Sentence file:") + name))
        return;
    m_context.state.Setting.ProjectName = name;
    accept();
}

void frmPjName::cmdCancel_Click()
{
    m_context.state.Setting.ProjectName.clear();
    reject();
}
