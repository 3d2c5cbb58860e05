#include "support/WindowBench.h"

#include <QAccessible>
#include <QAction>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

#include <functional>

namespace {

/// What a screen reader is told about one window: every element of its accessibility tree.
struct AccessibleElement
{
    QAccessible::Role role;
    QString name;
    QObject *object;
};

void collect(QAccessibleInterface *iface, QList<AccessibleElement> &into, int depth = 0)
{
    if (!iface || depth > 40)
        return;
    into.append({iface->role(), iface->text(QAccessible::Name), iface->object()});
    for (int i = 0; i < iface->childCount(); ++i)
        collect(iface->child(i), into, depth + 1);
}

QList<AccessibleElement> accessibilityTree(QObject *window)
{
    QList<AccessibleElement> elements;
    collect(QAccessible::queryAccessibleInterface(window), elements);
    return elements;
}

bool isInput(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::ScrollBar:
    case QAccessible::Slider:
    case QAccessible::ComboBox:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
        return true;
    default:
        return false;
    }
}

// A scroll area's own scroll bars and a combo box's drop-down list are parts of a control that
// carries the name itself.
bool isPartOfNamedControl(const QObject *object)
{
    for (const QObject *up = object ? object->parent() : nullptr; up; up = up->parent()) {
        if (up->objectName().startsWith(QLatin1String("qt_scrollarea_")) || up->inherits("QComboBox"))
            return true;
    }
    return false;
}

QString describe(const AccessibleElement &element)
{
    const QObject *o = element.object;
    return (o ? o->objectName() + QLatin1Char('/') + QLatin1String(o->metaObject()->className())
                    + (o->parent() ? QLatin1Char('<') + QLatin1String(o->parent()->metaObject()->className())
                                   : QString())
              : QStringLiteral("?"))
        + QLatin1Char('(') + QString::number(element.role) + QLatin1Char(')');
}

} // namespace

class tst_Accessibility : public QObject, public WindowBench
{
    Q_OBJECT

private slots:
    void init() { openBench(); }
    void cleanup()
    {
        closeWindows();
        f.reset();
    }

    void everyInputIsNamedAndNoTwoButtonsShareAName_data()
    {
        QTest::addColumn<WindowMaker>("make");
        addWindowRows([](const char *name) -> QTestData & { return QTest::newRow(name); });
    }
    void everyInputIsNamedAndNoTwoButtonsShareAName()
    {
        QFETCH(WindowMaker, make);
        QWidget *window = make();
        QVERIFY(window);
        QStringList faults;
        QMap<QString, QStringList> buttonsByName;
        for (const AccessibleElement &element : accessibilityTree(window)) {
            if (isInput(element.role) && !isPartOfNamedControl(element.object)
                && element.name.trimmed().isEmpty())
                faults << QStringLiteral("unnamed ") + describe(element);
            if (element.role == QAccessible::PushButton)
                buttonsByName[element.name] << describe(element);
            if (auto *action = qobject_cast<QAction *>(element.object); action && !action->isVisible())
                faults << QStringLiteral("hidden entry ") + action->objectName();
        }
        for (auto it = buttonsByName.cbegin(); it != buttonsByName.cend(); ++it) {
            if (it.value().size() > 1)
                faults << QStringLiteral("buttons named '%1': %2")
                              .arg(it.key(), it.value().join(QLatin1Char(' ')));
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QStringLiteral("; "))));
    }
};

QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
