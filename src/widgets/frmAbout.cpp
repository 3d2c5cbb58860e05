#include "widgets/frmAbout.h"

#include "setting/MsgBox.h"
#include "widgets/AppVersion.h"
#include "widgets/DialogLayout.h"

#include <QApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QStyle>

frmAbout::frmAbout(MsgBox &msgBox, QWidget *parent, const QString &systemInfoProgram)
    : QDialog(parent)
    , m_msgBox(msgBox)
    , m_systemInfoProgram(systemInfoProgram)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("Version Information(Dq480pcsoft)"));

    auto *picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    // The program's own icon where the program set one; a test's bare application has none.
    const QIcon programIcon = QApplication::windowIcon();
    picIcon->setPixmap(
        (programIcon.isNull() ? style()->standardIcon(QStyle::SP_MessageBoxInformation) : programIcon)
            .pixmap(48, 48));
    picIcon->setAccessibleName(tr("Program icon"));
    auto *lblTitle = new QLabel(QStringLiteral("Arvon DQ-480"), this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = lblTitle->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.5);
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);
    auto *lblVersion = new QLabel(tr("Dq480pcsoft Version ") + appVersionText(), this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    auto *lblDescription
        = new QLabel(tr("Setting software for the DQ-480 digital voice-message announcer: sentence table, "
                        "programs, card write and card format."),
                     this);
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);

    auto *cmdOK = namedButton(tr("OK"), "cmdOK", this);
    auto *cmdSysInfo = namedButton(tr("&System Info..."), "cmdSysInfo", this);
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::cmdSysInfo_Click);
    // A button that could only ever answer "not available" is not offered.
    cmdSysInfo->setVisible(!m_systemInfoProgram.isEmpty());

    auto *grid = new QGridLayout(this);
    grid->setHorizontalSpacing(16);
    grid->addWidget(picIcon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(lblTitle, 0, 1);
    grid->addWidget(lblVersion, 1, 1);
    grid->addWidget(lblDescription, 2, 1);
    grid->addLayout(buttonRow({cmdOK, cmdSysInfo}), 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    setMinimumWidth(440);
}

void frmAbout::StartSysInfo()
{
    const QString &program = m_systemInfoProgram;
    if (!program.isEmpty() && QFileInfo::exists(program) && QProcess::startDetached(program, {}))
        return;
    m_msgBox.show(QStringLiteral("現時点ではｼｽﾃﾑ情報を使用できません"));
}

void frmAbout::cmdOK_Click()
{
    accept();
}

void frmAbout::cmdSysInfo_Click()
{
    StartSysInfo();
}
