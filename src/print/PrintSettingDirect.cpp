// The print setting dialog built in, for the tests and any program without the printing plugin.

#include "PrintSetting.h"
#include "frmPrintPage.h"

void showPrintSetting(AppContext &context, PrintKind kind, int program, QWidget *parent)
{
    frmPrintPage dialog(context, kind, program, parent);
    dialog.exec();
}
