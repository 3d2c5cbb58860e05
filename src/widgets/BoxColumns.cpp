#include "widgets/BoxColumns.h"

#include "setting/NumberText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

BoxColumns::BoxColumns(int count, int rows, int visibleColumns, const QString &widestText, int maxLength,
                       Names names, QWidget *parent, int verticalSpacing, const QString &widestNote)
    : QWidget(parent)
    , m_frame(new QWidget(this))
    , m_rows(rows)
    , m_visibleColumns(visibleColumns)
{
    setObjectName(QLatin1String(names.view));
    m_frame->setObjectName(QLatin1String(names.frame));
    auto *grid = new QGridLayout(m_frame);
    grid->setHorizontalSpacing(6);
    // No left margin: a slid-out column would show its edge in it.
    const QMargins margins = grid->contentsMargins();
    grid->setContentsMargins(0, margins.top(), margins.right(), margins.bottom());
    if (verticalSpacing >= 0)
        grid->setVerticalSpacing(verticalSpacing);
    const int boxWidth = fontMetrics().horizontalAdvance(widestText) + 12;
    const int span = names.note ? 3 : 2;
    const int noteWidth = fontMetrics().horizontalAdvance(widestNote) + 4;
    for (int i = 0; i < count; ++i) {
        auto *label = new QLabel(zeroPadded(i + 1, 3) + QLatin1Char(':'), m_frame);
        label->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(names.label)).arg(i));
        auto *box = new QLineEdit(m_frame);
        box->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(names.box)).arg(i));
        box->setMaxLength(maxLength);
        box->setFixedWidth(boxWidth);
        label->setBuddy(box);
        grid->addWidget(label, i % rows, (i / rows) * span);
        grid->addWidget(box, i % rows, (i / rows) * span + 1);
        m_labels.push_back(label);
        m_boxes.push_back(box);
        if (names.note) {
            auto *note = new QLabel(m_frame);
            note->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(names.note)).arg(i));
            // The same width whether it shows a time or not, so that the columns keep their places.
            note->setFixedWidth(noteWidth);
            grid->addWidget(note, i % rows, (i / rows) * span + 2);
            m_notes.push_back(note);
        }
    }
    layOut();
}

void BoxColumns::layOut()
{
    m_frame->resize(m_frame->sizeHint());
    m_frame->layout()->setGeometry(m_frame->rect());
    // Column and view widths come from where the layout put the labels.
    m_columnWidth = m_labels[m_rows]->x() - m_labels[0]->x();
    setFixedSize(m_labels[m_rows * m_visibleColumns]->x(), m_frame->height());
}

void BoxColumns::showColumn(int first)
{
    m_frame->move(-m_columnWidth * first, 0);
}
