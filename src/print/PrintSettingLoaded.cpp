// The desktop program's print setting dialog: the printing plugin, loaded when the operator first
// prints.

#include "capabilities/CapabilityPlugin.h"
#include "print/PrintSetting.h"
#include "setting/MsgBox.h"
#include "widgets/AppContext.h"

void showPrintSetting(AppContext &context, PrintKind kind, int program, QWidget *parent)
{
    QString error;
    auto *printing = capability<PrintSettingInterface>(Capability::Printing, error);
    if (!printing) {
        context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    printing->show(context, kind, program, parent);
}
