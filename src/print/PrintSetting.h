#pragma once

#include "print/PrintOut.h"

#include <QtPlugin>

struct AppContext;
class QWidget;

/// Shows the print setting dialog modally (a printer or a PDF file, all pages or a range, a
/// preview) for the print-out of `kind`; `program` (1-64) for one program's. The desktop program
/// loads the dialog, with Qt Print Support, the first time the operator prints.
void showPrintSetting(AppContext &context, PrintKind kind, int program, QWidget *parent);

/// What the printing plugin offers.
class PrintSettingInterface
{
public:
    virtual ~PrintSettingInterface() = default;
    virtual void show(AppContext &context, PrintKind kind, int program, QWidget *parent) = 0;
};

#define DQ480_PRINT_SETTING_IID "com.arvon.dq480.PrintSetting/1"
Q_DECLARE_INTERFACE(PrintSettingInterface, DQ480_PRINT_SETTING_IID)
