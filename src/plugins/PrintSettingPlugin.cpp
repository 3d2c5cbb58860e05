// The print setting dialog and Qt Print Support as a plugin, loaded when the operator first prints.

#include "print/PrintSetting.h"

class PrintSettingPlugin : public QObject, public PrintSettingInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DQ480_PRINT_SETTING_IID)
    Q_INTERFACES(PrintSettingInterface)

public:
    void show(AppContext &context, PrintKind kind, int program, QWidget *parent) override
    {
        ::showPrintSetting(context, kind, program, parent);
    }
};

#include "PrintSettingPlugin.moc"
