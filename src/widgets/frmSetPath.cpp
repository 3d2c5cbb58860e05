#include "widgets/frmSetPath.h"

#include "setting/PathText.h"
#include "widgets/DialogLayout.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStorageInfo>

namespace {

const QString ParentEntry = QStringLiteral("..");

QString driveRootOf(const QString &folder)
{
    const QStorageInfo storage(folder);
    return storage.isValid() ? QDir::toNativeSeparators(storage.rootPath()) : QDir::rootPath();
}

QLabel *captionFor(const QString &text, QWidget *buddy, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}

} // namespace

frmSetPath::frmSetPath(const QString &startFolder, QWidget *parent)
    : QDialog(parent)
    , m_startFolder(withoutTrailingSeparator(startFolder))
    , m_drives(new QComboBox(this))
    , m_folderLabel(new QLabel(this))
    , m_dirs(new QListWidget(this))
    , m_files(new QListWidget(this))
{
    setObjectName(QStringLiteral("frmSetPath"));
    setWindowTitle(tr("Path Setting"));
    m_drives->setObjectName(QStringLiteral("Drive1"));
    m_dirs->setObjectName(QStringLiteral("Dir1"));
    m_files->setObjectName(QStringLiteral("File1"));
    // Item views take no name from their caption's buddy.
    m_dirs->setAccessibleName(tr("Folder"));
    m_files->setAccessibleName(tr("Files"));
    m_folderLabel->setObjectName(QStringLiteral("lblFolder"));
    m_folderLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_files->setSelectionMode(QAbstractItemView::NoSelection);

    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        if (volume.isValid() && volume.isReady())
            m_drives->addItem(QDir::toNativeSeparators(volume.rootPath()));
    }
    auto *ok = namedButton(tr("OK"), "cmdOK", this);
    auto *cancel = namedButton(tr("Cancel"), "cmdCancel", this);

    auto *grid = new QGridLayout(this);
    grid->addWidget(captionFor(tr("&Drive:"), m_drives, this), 0, 0);
    grid->addWidget(m_drives, 1, 0);
    grid->addWidget(captionFor(tr("F&older:"), m_dirs, this), 2, 0);
    grid->addWidget(m_folderLabel, 3, 0, 1, 2);
    grid->addWidget(m_dirs, 4, 0);
    grid->addWidget(captionFor(tr("&Files:"), m_files, this), 2, 1);
    grid->addWidget(m_files, 4, 1);
    grid->addLayout(buttonRow({ok, cancel}), 5, 0, 1, 2);
    resize(560, 380);

    connect(m_drives, &QComboBox::activated, this, &frmSetPath::Drive1_Change);
    connect(m_dirs, &QListWidget::itemActivated, this, &frmSetPath::Dir1_DblClick);
    m_dirs->installEventFilter(this);
    connect(ok, &QPushButton::clicked, this, &frmSetPath::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &frmSetPath::cmdCancel_Click);

    showFolder(QDir(m_startFolder).exists() ? m_startFolder : QDir::homePath());
}

QString frmSetPath::chosenFolder() const
{
    return withoutTrailingSeparator(m_folder);
}

void frmSetPath::showFolder(const QString &folder)
{
    QDir dir(folder);
    // A folder that cannot be listed shows its drive's root instead.
    if (!dir.isReadable())
        dir.setPath(driveRootOf(folder));
    m_folder = QDir::toNativeSeparators(dir.absolutePath());
    m_folderLabel->setText(m_folder);
    const int driveIndex = m_drives->findText(driveRootOf(m_folder));
    if (driveIndex >= 0)
        m_drives->setCurrentIndex(driveIndex);

    m_dirs->clear();
    if (!dir.isRoot())
        m_dirs->addItem(ParentEntry);
    m_dirs->addItems(dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase));
    m_dirs->setCurrentRow(0); // so the keyboard has an entry to move from and to open
    m_files->clear();
    m_files->addItems(dir.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase));
}

void frmSetPath::Drive1_Change(int index)
{
    showFolder(m_drives->itemText(index));
}

void frmSetPath::Dir1_DblClick(QListWidgetItem *item)
{
    QDir dir(m_folder);
    if (item->text() == ParentEntry)
        dir.cdUp();
    else
        dir.cd(item->text());
    showFolder(dir.absolutePath());
}

bool frmSetPath::eventFilter(QObject *watched, QEvent *event)
{
    // Enter in the folder list opens the folder, as a double click does, and does not also press OK.
    if (watched == m_dirs && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (QListWidgetItem *item = m_dirs->currentItem())
                Dir1_DblClick(item);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmSetPath::cmdOK_Click()
{
    accept();
}

void frmSetPath::cmdCancel_Click()
{
    m_folder = m_startFolder;
    reject();
}
