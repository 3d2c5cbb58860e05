#pragma once

#include <QWidget>

/// The input's level while a take is recorded: a bar from -60 to 0 dBFS with the level in figures,
/// green, then yellow from -12 dBFS and red from -3 dBFS, and "Clipped" in red once the take has
/// reached full scale, which no later quiet passage takes back.
class LevelMeter : public QWidget
{
    Q_OBJECT

public:
    static constexpr double LowestDb = -60.0;

    explicit LevelMeter(QWidget *parent = nullptr);

    void setLevel(double peakDb, bool clipped);
    /// No level: nothing is being recorded.
    void clear();
    /// What the meter shows in words, as screen readers hear it: "-12.0 dBFS", "-0.0 dBFS, clipped".
    QString text() const;
    bool clipped() const { return m_clipped; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString levelText() const;

    double m_db = LowestDb;
    bool m_shown = false;
    bool m_clipped = false;
};
