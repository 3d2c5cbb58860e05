// The print setting dialog built in, for the tests and any program without the printing plugin.

#include "print/PrintSetting.h"
#include "print/frmPrintPage.h"

void showPrintSetting(AppContext &context, PrintKind kind, int program, QWidget *parent)
{
    frmPrintPage dialog(context, kind, program, parent);
    dialog.exec();
}
