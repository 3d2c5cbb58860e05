#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;
class SharedState;

/// The three print-outs of the main window's menus, and the one-program print-out.
enum class PrintKind { FileInformation, AllSettingData, AllPrograms, OneProgram };

/// One line of a print-out. Rows are not split across pages unless taller than a page.
struct PrintRow
{
    enum Style { Title, Heading, Field, TableHeader, TableRow, Steps };
    Style style;
    QStringList cells;
};

/// The rows of a print-out of Setting. `program` (1-64) is for OneProgram.
QList<PrintRow> buildPrintOut(const SharedState &state, PrintKind kind, int program = 1);

/// renderPrintOut's answer when the page range goes beyond the last page.
constexpr int PageRangeOutside = -1;

/// Lays the rows out on A4 pages with a header (project, file, date) and "page n / m", and paints
/// pages `fromPage` to `toPage` (1-based; 0 for all) on the device. A row taller than a page
/// continues on the next. Returns the number of pages of the whole print-out, 0 when the device
/// could not be painted on, or PageRangeOutside (nothing painted) when a page asked for is not there.
int renderPrintOut(QPagedPaintDevice &device, const QList<PrintRow> &rows, const QString &header,
                   int fromPage = 0, int toPage = 0);

/// The number of pages renderPrintOut makes of the rows on the device.
int printOutPageCount(QPagedPaintDevice &device, const QList<PrintRow> &rows);

/// The header line of a print-out: project name, file name and today's date.
QString printHeader(const SharedState &state);
