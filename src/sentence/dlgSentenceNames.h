#pragma once

#include <QDialog>
#include <QStringList>

#include <vector>

class MsgBox;
class QLineEdit;

/// What a sentence name may be, in the operator's words, wherever one is typed.
QString sentenceNameRule();

/// Offers a sentence name for each recording whose own name cannot name a sentence (too long,
/// holding a blank or a refused character, or held by another entry), for the operator to change
/// before anything is imported.
class dlgSentenceNames : public QDialog
{
    Q_OBJECT

public:
    struct Offer
    {
        QString recording; // full path
        QString name; // the sentence file name, "GOOD_MOR.MP2"
    };

    /// `taken` holds the sentence file names that other entries keep.
    dlgSentenceNames(const std::vector<Offer> &offers, const QStringList &taken, MsgBox &msgBox,
                     QWidget *parent);

    /// The names as the operator left them, in the order of the offers, each with ".MP2".
    QStringList chosenNames() const;
    QLineEdit *nameBox(int index) const { return m_boxes[size_t(index)]; }

public slots:
    /// Takes the names only when each fits and no two entries would share one.
    void cmdSentenceNamesOk_Click();

private:
    MsgBox &m_msgBox;
    QStringList m_taken;
    std::vector<QLineEdit *> m_boxes;
};
