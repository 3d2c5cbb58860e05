#include "widgets/frmSplash.h"

#include "widgets/AppVersion.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace {

// 1000 twips: a twip is 1/1440 inch, the logical screen 96 dots per inch.
constexpr int ThousandTwipsInPixels = 1000 * 96 / 1440;

} // namespace

frmSplash::frmSplash(QWidget *mainWindow)
    : QDialog(mainWindow, Qt::SplashScreen | Qt::FramelessWindowHint)
    , m_title(new QLabel(QStringLiteral("   Arvon DQ-480"), this))
    , m_version(new QLabel(tr("Ver ") + appVersionText(), this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Arvon DQ-480")); // the name a window list shows for it
    setAccessibleName(QStringLiteral("Arvon DQ-480"));
    m_title->setObjectName(QStringLiteral("lblProductName"));
    m_version->setObjectName(QStringLiteral("lblVersion"));

    QFont titleFont = m_title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 2.6);
    // Large and in the icon's blue rather than bold: a bold face is a second font file to load, and
    // a third of a megabyte, on every start.
    m_title->setFont(titleFont);
    QPalette titlePalette = m_title->palette();
    titlePalette.setColor(QPalette::WindowText, QColor(30, 90, 160));
    m_title->setPalette(titlePalette);
    QFont versionFont = m_version->font();
    versionFont.setPointSizeF(versionFont.pointSizeF() * 1.3);
    m_version->setFont(versionFont);
    m_version->setAlignment(Qt::AlignRight);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(40, 36, 40, 28);
    layout->setSpacing(24);
    layout->addWidget(m_title);
    layout->addWidget(m_version);
    m_title->installEventFilter(this);
    m_version->installEventFilter(this);
    adjustSize();
    placeOver(mainWindow);
}

void frmSplash::placeOver(const QWidget *mainWindow)
{
    const QRect area = mainWindow && mainWindow->isVisible()
        ? mainWindow->frameGeometry()
        : QGuiApplication::primaryScreen()->availableGeometry();
    QRect frame = frameGeometry();
    frame.moveCenter(area.center());
    move(frame.left(), frame.top() - ThousandTwipsInPixels);
}

// Painted rather than styled: a style sheet would bring Qt's whole style sheet machinery into every
// start for one frame.
void frmSplash::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    painter.fillRect(rect().marginsRemoved(QMargins(2, 2, 2, 2)), palette().color(QPalette::Base));
}

void frmSplash::keyPressEvent(QKeyEvent *)
{
    close();
}

bool frmSplash::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        close();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
