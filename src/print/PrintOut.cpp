#include "print/PrintOut.h"

#include "audio/AudioInfo.h"
#include "audio/ProgramDuration.h"
#include "print/PrintValues.h"
#include "setting/NumberText.h"
#include "setting/SharedState.h"

#include <QCoreApplication>
#include <QDate>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRegularExpression>
#include <QTextLayout>

#include <algorithm>

namespace {

namespace V = PrintValues;

void addProgram(QList<PrintRow> &rows, const SettingData &s, int p, SentenceTimes &times)
{
    const qint32 option = s.ProgramOption[p];
    rows.append({PrintRow::Heading,
                 {QLatin1Char('P') + zeroPadded(p + 1, 3) + QLatin1String("  ") + s.ProgramName[p]}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Playback method"), V::methodText(option)}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Output Level"), V::outputLevelText(option)}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Repeat count"),
                  V::repeatCountText(s.RepeatCount[p], option)}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Repeat interval"),
                  V::repeatIntervalText(s.RepeatInterval[p], option)}});
    const QString busy = V::busyText(option);
    if (!busy.isEmpty())
        rows.append(
            {PrintRow::Field, {QCoreApplication::translate("PrintOut", "Interval busy output"), busy}});
    // Steps sixteen to a line, numbered by the first step of the line.
    constexpr int PerLine = 16;
    QStringList line;
    int first = 1;
    int number = 0;
    for (const QString &stored : s.ProgramData[p]) {
        const QString text = V::stepText(stored);
        if (text.isEmpty())
            continue;
        if (line.isEmpty())
            first = number + 1;
        line << text;
        ++number;
        if (line.size() == PerLine) {
            rows.append(
                {PrintRow::Steps, {zeroPadded(first, 3) + QLatin1Char(':'), line.join(QLatin1Char(' '))}});
            line.clear();
        }
    }
    if (!line.isEmpty())
        rows.append(
            {PrintRow::Steps, {zeroPadded(first, 3) + QLatin1Char(':'), line.join(QLatin1Char(' '))}});
    if (number == 0)
        rows.append({PrintRow::Steps, {QString(), QCoreApplication::translate("PrintOut", "(no steps)")}});
    else
        rows.append({PrintRow::Field,
                     {QCoreApplication::translate("PrintOut", "Playing time"),
                      programPlayingTimeText(programPlayingTime(s, p, times))}});
}

void addInformation(QList<PrintRow> &rows, const SharedState &state)
{
    const SettingData &s = state.Setting;
    rows.append({PrintRow::Heading, {QCoreApplication::translate("PrintOut", "File information")}});
    rows.append(
        {PrintRow::Field, {QCoreApplication::translate("PrintOut", "File name"), state.ProjectFileName}});
    rows.append(
        {PrintRow::Field, {QCoreApplication::translate("PrintOut", "File location"), state.ProjectFolder}});
    rows.append({PrintRow::Field, {QCoreApplication::translate("PrintOut", "Project name"), s.ProjectName}});
    rows.append({PrintRow::Field, {QCoreApplication::translate("PrintOut", "Creator"), s.Creator}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Explanation"),
                  QString(s.Explanation).replace(QLatin1String("\r\n"), QLatin1String("\n"))}});
    rows.append({PrintRow::Field, {QCoreApplication::translate("PrintOut", "Card name"), s.CardName}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Sentences"),
                  QString::number(s.sentenceTable().entries())}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Write protect"),
                  (s.CardAttribute & SettingData::AttributeWriteProtect)
                      ? QCoreApplication::translate("PrintOut", "ON")
                      : QCoreApplication::translate("PrintOut", "OFF")}});
    rows.append({PrintRow::Field,
                 {QCoreApplication::translate("PrintOut", "Test tone"),
                  state.SurveillanceFile ? QCoreApplication::translate("PrintOut", "ON")
                                         : QCoreApplication::translate("PrintOut", "OFF")}});
}

void addSentences(QList<PrintRow> &rows, const SettingData &s, SentenceTimes &times)
{
    rows.append({PrintRow::Heading, {QCoreApplication::translate("PrintOut", "Sentence table")}});
    rows.append({PrintRow::TableHeader,
                 {QCoreApplication::translate("PrintOut", "No."),
                  QCoreApplication::translate("PrintOut", "File name"),
                  QCoreApplication::translate("PrintOut", "Control"),
                  QCoreApplication::translate("PrintOut", "Time")}});
    for (int slot = 0; slot < s.sentenceTable().entries(); ++slot) {
        if (s.SentenceFileName[slot].isEmpty())
            continue;
        const std::optional<double> seconds = times.seconds(s.SentenceFileName[slot]);
        rows.append(
            {PrintRow::TableRow,
             {zeroPadded(slot + 1, 3), s.SentenceFileName[slot], s.SentenceControl[slot],
              seconds ? formatDuration(*seconds) : QCoreApplication::translate("PrintOut", "not found")}});
    }
}

} // namespace

QList<PrintRow> buildPrintOut(const SharedState &state, PrintKind kind, int program)
{
    const SettingData &s = state.Setting;
    SentenceTimes times(sentenceSoundFolders(state));
    QList<PrintRow> rows;
    switch (kind) {
    case PrintKind::FileInformation:
        rows.append({PrintRow::Title, {QCoreApplication::translate("PrintOut", "File information copy")}});
        addInformation(rows, state);
        break;
    case PrintKind::AllSettingData:
        rows.append({PrintRow::Title, {QCoreApplication::translate("PrintOut", "All setting data copy")}});
        addInformation(rows, state);
        addSentences(rows, s, times);
        rows.append({PrintRow::Heading, {QCoreApplication::translate("PrintOut", "Programs")}});
        for (int p = 0; p < SettingData::Programs; ++p)
            addProgram(rows, s, p, times);
        break;
    case PrintKind::AllPrograms:
        rows.append({PrintRow::Title, {QCoreApplication::translate("PrintOut", "All program copy")}});
        for (int p = 0; p < SettingData::Programs; ++p)
            addProgram(rows, s, p, times);
        break;
    case PrintKind::OneProgram:
        rows.append({PrintRow::Title,
                     {QCoreApplication::translate("PrintOut", "Print out program number:") + QLatin1Char('P')
                      + zeroPadded(program, 3)}});
        addProgram(rows, s, qBound(1, program, SettingData::Programs) - 1, times);
        break;
    }
    return rows;
}

QString printHeader(const SharedState &state)
{
    const QString project = state.Setting.ProjectName.isEmpty()
        ? QCoreApplication::translate("PrintOut", "(no project name)")
        : state.Setting.ProjectName;
    return QStringLiteral("DQ-480  %1  -  %2  -  %3")
        .arg(project, state.ProjectFileName, QDate::currentDate().toString(Qt::ISODate));
}

namespace {

struct Layout
{
    QRectF body;
    QFont normal;
    QFont bold;
    QFont title;
    qreal labelWidth;
    qreal gap;
};

QFont fontFor(const Layout &layout, PrintRow::Style style)
{
    if (style == PrintRow::Title)
        return layout.title;
    if (style == PrintRow::Heading || style == PrintRow::TableHeader)
        return layout.bold;
    return layout.normal;
}

// Wrapping at word boundaries, or anywhere when a single word (a long card name, say) is wider
// than the cell: it then breaks at the edge instead of running off the page.
int wrapFlags(const QFontMetricsF &metrics, const QString &text, qreal width)
{
    const QStringList words = text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    const bool tooWide = std::any_of(words.begin(), words.end(), [&](const QString &word) {
        return metrics.horizontalAdvance(word) > width;
    });
    return tooWide ? Qt::TextWrapAnywhere : Qt::TextWordWrap;
}

// The rectangle each cell of a row takes, from the left edge of the body; the last cell wraps.
QList<QRectF> cellRects(const Layout &layout, const PrintRow &row, QPaintDevice *device)
{
    const QFontMetricsF metrics(fontFor(layout, row.style), device);
    const qreal width = layout.body.width();
    QList<QRectF> rects;
    if (row.style == PrintRow::TableHeader || row.style == PrintRow::TableRow) {
        const qreal columns[] = {0, width * 0.12, width * 0.45, width * 0.7};
        const int count = qMin(int(row.cells.size()), 4);
        for (int i = 0; i < count; ++i)
            rects << QRectF(columns[i], 0, (i + 1 < count ? columns[i + 1] : width) - columns[i],
                            metrics.height());
        return rects;
    }
    if (row.cells.size() == 2) {
        const qreal label = row.style == PrintRow::Steps ? metrics.horizontalAdvance(QStringLiteral("000: "))
                                                         : layout.labelWidth;
        const QRectF text = metrics.boundingRect(
            QRectF(0, 0, width - label, 1e6), wrapFlags(metrics, row.cells[1], width - label), row.cells[1]);
        rects << QRectF(0, 0, label, metrics.height())
              << QRectF(label, 0, width - label, qMax(text.height(), metrics.height()));
        return rects;
    }
    const QRectF text = metrics.boundingRect(
        QRectF(0, 0, width, 1e6), wrapFlags(metrics, row.cells.value(0), width), row.cells.value(0));
    rects << QRectF(0, 0, width, qMax(text.height(), metrics.height()));
    return rects;
}

qreal gapBelow(const Layout &layout, PrintRow::Style style)
{
    const bool spaced = style == PrintRow::Title || style == PrintRow::Heading;
    return layout.gap * (spaced ? 3 : 1);
}

qreal rowHeight(const Layout &layout, const PrintRow &row, QPaintDevice *device)
{
    qreal height = 0;
    for (const QRectF &rect : cellRects(layout, row, device))
        height = qMax(height, rect.bottom());
    return height + gapBelow(layout, row.style);
}

// The lines a text wraps into at `width`, as drawText breaks it.
QStringList wrappedLines(const QString &text, const QFont &font, qreal width, QPaintDevice *device)
{
    QStringList lines;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (const QString &paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout textLayout(paragraph, font, device);
        textLayout.setTextOption(option);
        textLayout.beginLayout();
        int count = 0;
        for (QTextLine line = textLayout.createLine(); line.isValid(); line = textLayout.createLine()) {
            line.setLineWidth(width);
            lines << paragraph.mid(line.textStart(), line.textLength());
            ++count;
        }
        textLayout.endLayout();
        if (count == 0)
            lines << QString();
    }
    return lines;
}

// What goes on a page: a whole row, or one line of a row too tall for any page.
struct Piece
{
    PrintRow row;
    qreal height; // with the space below it
};

// A row taller than the page body is cut into its lines, so that it continues on the next page
// instead of running over the footer; the label stays with its first line.
QList<Piece> piecesOf(const Layout &layout, const PrintRow &row, QPaintDevice *device)
{
    const qreal height = rowHeight(layout, row, device);
    if (height <= layout.body.height() || row.cells.isEmpty())
        return {{row, height}};
    const qsizetype textCell = row.cells.size() - 1;
    const QList<QRectF> rects = cellRects(layout, row, device);
    const QStringList lines
        = wrappedLines(row.cells[textCell], fontFor(layout, row.style), rects[textCell].width(), device);
    QList<Piece> pieces;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        PrintRow part {row.style, row.cells};
        for (qsizetype c = 0; i > 0 && c < textCell; ++c)
            part.cells[c].clear();
        part.cells[textCell] = lines[i];
        const bool last = i + 1 == lines.size();
        pieces.append({part, rowHeight(layout, part, device) - (last ? 0 : gapBelow(layout, part.style))});
    }
    return pieces;
}

struct PageLayout
{
    Layout layout;
    qreal headerHeight = 0;
    QRect page;
    QList<QList<Piece>> pages;
};

PageLayout layOut(QPagedPaintDevice &device, const QList<PrintRow> &rows)
{
    device.setPageSize(QPageSize(QPageSize::A4));
    device.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    const qreal dpi = device.logicalDpiY();
    PageLayout result;
    Layout &layout = result.layout;
    layout.normal = QFont(QStringLiteral("DejaVu Sans"), 9);
    layout.bold = layout.normal;
    layout.bold.setBold(true);
    layout.title = layout.bold;
    layout.title.setPointSizeF(13);
    layout.gap = dpi * 0.04;
    layout.labelWidth = dpi * 1.7;
    result.headerHeight = QFontMetricsF(layout.normal, &device).height() * 2;
    result.page = device.pageLayout().paintRectPixels(qRound(dpi));
    layout.body
        = QRectF(0, result.headerHeight, result.page.width(), result.page.height() - 2 * result.headerHeight);

    QList<Piece> pieces;
    for (const PrintRow &row : rows)
        pieces << piecesOf(layout, row, &device);
    // A piece that does not fit starts the next page, and a heading with the rows under it (a
    // program, say) moves to the next page whole when it fits on one.
    QList<QList<Piece>> &pages = result.pages;
    pages.append(QList<Piece>());
    qreal y = 0;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        qreal needed = pieces[i].height;
        if (pieces[i].row.style == PrintRow::Heading) {
            for (qsizetype j = i + 1; j < pieces.size() && pieces[j].row.style != PrintRow::Heading
                 && pieces[j].row.style != PrintRow::Title;
                 ++j)
                needed += pieces[j].height;
            if (needed > layout.body.height()) // too long: keep only the first row with it
                needed = pieces[i].height + (i + 1 < pieces.size() ? pieces[i + 1].height : 0);
        }
        if (y + needed > layout.body.height() && !pages.last().isEmpty()) {
            pages.append(QList<Piece>());
            y = 0;
        }
        pages.last().append(pieces[i]);
        y += pieces[i].height;
    }
    return result;
}

} // namespace

int printOutPageCount(QPagedPaintDevice &device, const QList<PrintRow> &rows)
{
    return static_cast<int>(layOut(device, rows).pages.size());
}

int renderPrintOut(QPagedPaintDevice &device, const QList<PrintRow> &rows, const QString &header,
                   int fromPage, int toPage)
{
    const PageLayout laidOut = layOut(device, rows);
    const Layout &layout = laidOut.layout;
    const QRect &page = laidOut.page;
    const int count = static_cast<int>(laidOut.pages.size());
    if (fromPage > count || toPage > count)
        return PageRangeOutside;
    const int first = fromPage > 0 ? fromPage : 1;
    const int last = toPage > 0 ? qMax(first, toPage) : count;
    const QFontMetricsF normalMetrics(layout.normal, &device);

    QPainter painter;
    if (!painter.begin(&device))
        return 0;
    for (int number = first; number <= last; ++number) {
        if (number > first)
            device.newPage();
        painter.setFont(layout.normal);
        painter.setPen(Qt::darkGray);
        painter.drawText(QRectF(0, 0, page.width(), normalMetrics.height()), Qt::AlignLeft, header);
        painter.drawLine(QPointF(0, normalMetrics.height() * 1.3),
                         QPointF(page.width(), normalMetrics.height() * 1.3));
        painter.drawText(
            QRectF(0, page.height() - normalMetrics.height(), page.width(), normalMetrics.height()),
            Qt::AlignHCenter, QCoreApplication::translate("PrintOut", "page %1 / %2").arg(number).arg(count));
        painter.setPen(Qt::black);
        qreal top = layout.body.top();
        for (const Piece &piece : laidOut.pages[number - 1]) {
            const PrintRow &row = piece.row;
            painter.setFont(fontFor(layout, row.style));
            const bool spaced = row.style == PrintRow::Title || row.style == PrintRow::Heading;
            const qreal offset = spaced ? layout.gap * 2 : 0;
            const QList<QRectF> rects = cellRects(layout, row, &device);
            const QFontMetricsF metrics(painter.font(), &device);
            for (int c = 0; c < rects.size() && c < row.cells.size(); ++c)
                painter.drawText(rects[c].translated(0, top + offset),
                                 wrapFlags(metrics, row.cells[c], rects[c].width()) | Qt::AlignLeft
                                     | Qt::AlignTop,
                                 row.cells[c]);
            top += piece.height;
        }
    }
    painter.end();
    return count;
}
