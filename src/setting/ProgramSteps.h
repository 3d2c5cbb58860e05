#pragma once

#include <QList>
#include <QString>

#include <iterator>

/// The steps of one program: Count texts, each empty or a four-character step. Only the texts up to
/// the last one set are held until a step is written, and copies share them until one of them is
/// changed: a new project's programs hold one text each, once for the working, committed and saved
/// copies together.
class ProgramSteps
{
public:
    static constexpr qsizetype Count = 128;

    class const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = QString;
        using difference_type = qsizetype;
        using pointer = const QString *;
        using reference = const QString &;

        const_iterator() = default;
        const_iterator(const ProgramSteps *steps, qsizetype step)
            : m_steps(steps)
            , m_step(step)
        { }
        reference operator*() const { return m_steps->at(m_step); }
        pointer operator->() const { return &m_steps->at(m_step); }
        const_iterator &operator++()
        {
            ++m_step;
            return *this;
        }
        const_iterator operator++(int)
        {
            const const_iterator before = *this;
            ++m_step;
            return before;
        }
        friend bool operator==(const const_iterator &, const const_iterator &) = default;

    private:
        const ProgramSteps *m_steps = nullptr;
        qsizetype m_step = 0;
    };

    /// Every step empty.
    ProgramSteps() = default;
    /// The first step `first`, the others empty.
    explicit ProgramSteps(const QString &first)
        : m_texts {first}
    { }

    static constexpr qsizetype size() { return Count; }
    const QString &at(qsizetype step) const;
    const QString &operator[](qsizetype step) const { return at(step); }
    /// Writing holds all Count texts, so that a reference to one stays valid while others change.
    QString &operator[](qsizetype step) { return held()[step]; }

    const_iterator begin() const { return {this, 0}; }
    const_iterator end() const { return {this, Count}; }
    QList<QString>::iterator begin() { return held().begin(); }
    QList<QString>::iterator end() { return held().end(); }

    friend bool operator==(const ProgramSteps &a, const ProgramSteps &b);

private:
    QList<QString> &held();

    QList<QString> m_texts;
};
