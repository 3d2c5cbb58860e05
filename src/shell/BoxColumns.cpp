#include "BoxColumns.h"

#include "NumberText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

BoxColumns::BoxColumns(int count, int rows, int visibleColumns, const QString &widestText, int maxLength,
                       Names names, QWidget *parent, int verticalSpacing)
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
    for (int i = 0; i < count; ++i) {
        auto *label = new QLabel(zeroPadded(i + 1, 3) + QLatin1Char(':'), m_frame);
        label->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(names.label)).arg(i));
        auto *box = new QLineEdit(m_frame);
        box->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(names.box)).arg(i));
        box->setMaxLength(maxLength);
        box->setFixedWidth(boxWidth);
        label->setBuddy(box);
        grid->addWidget(label, i % rows, (i / rows) * 2);
        grid->addWidget(box, i % rows, (i / rows) * 2 + 1);
        m_labels.push_back(label);
        m_boxes.push_back(box);
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
