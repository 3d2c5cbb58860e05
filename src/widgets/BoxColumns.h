#pragma once

#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;

/// Numbered boxes ("001:", "002:"...) standing in columns, of which a few show at a time; the rest
/// slide into view column by column (the step window's steps, the sentence table's entries).
class BoxColumns : public QWidget
{
    Q_OBJECT

public:
    /// Object names of the parts; label and box names get "_" and the index appended.
    struct Names
    {
        const char *view;
        const char *frame;
        const char *label;
        const char *box;
        /// A small text after each box (a sentence's playing time); none when null.
        const char *note = nullptr;
    };

    /// With `names.note`, each box has a note after it as wide as `widestNote`.
    BoxColumns(int count, int rows, int visibleColumns, const QString &widestText, int maxLength, Names names,
               QWidget *parent, int verticalSpacing = -1, const QString &widestNote = QString());

    QLineEdit *box(int index) const { return m_boxes[index]; }
    QLabel *label(int index) const { return m_labels[index]; }
    /// The text after box `index`; null when the columns have none.
    QLabel *note(int index) const { return m_notes.empty() ? nullptr : m_notes[index]; }
    int count() const { return static_cast<int>(m_boxes.size()); }
    int columnOf(int index) const { return index / m_rows; }

    /// Lays the boxes out now, so that hidden boxes take no room and the view is sized to exactly
    /// the visible columns before the window is shown.
    void layOut();

    /// Slides the columns so that column `first` is the leftmost shown.
    void showColumn(int first);

    /// The leftmost column to show so that box `index` is in view, moving as little as possible
    /// from `first`.
    int firstColumnShowing(int index, int first) const
    {
        const int column = columnOf(index);
        return column < first                    ? column
            : column >= first + m_visibleColumns ? column - m_visibleColumns + 1
                                                 : first;
    }

private:
    QWidget *m_frame;
    int m_rows;
    int m_visibleColumns;
    int m_columnWidth = 0;
    std::vector<QLabel *> m_labels;
    std::vector<QLineEdit *> m_boxes;
    std::vector<QLabel *> m_notes;
};
