#include "widgets/dlgErrLog.h"

#include "setting/SentenceFolders.h"
#include "widgets/DialogLayout.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

dlgErrLog::dlgErrLog(const SharedState &state, QWidget *parent)
    : QDialog(parent)
    , m_listErr(new QListWidget(this))
    , m_count(new QLabel(this))
{
    setObjectName(QStringLiteral("dlgErrLog"));
    setWindowTitle(tr(" Not find file list"));
    m_listErr->setObjectName(QStringLiteral("listErr"));
    m_listErr->setAccessibleName(tr("Not find file list"));
    m_count->setObjectName(QStringLiteral("lblErrCount"));
    auto *okButton = namedButton(tr("Ok"), "OKButton", this);
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_listErr);
    layout->addWidget(m_count);
    layout->addLayout(buttonRow({okButton}));
    resize(360, 320);
    Form_Load(state);
}

void dlgErrLog::Form_Load(const SharedState &state)
{
    const QStringList missing = missingSentenceFiles(state);
    m_listErr->addItems(missing);
    m_count->setText(tr(" Not find file count: ") + QLatin1Char(' ') + QString::number(missing.size()));
}
