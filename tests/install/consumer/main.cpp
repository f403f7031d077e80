// A consumer of the installed package: records one action into a script.
#include <Script/AQObjects.h>
#include <Script/AQScriptEngine.h>
#include <Scriptable/AQAction.h>

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 2)
        return 2;
    QtUIBase::AQInitializeNonVelmoraScripting("consumer", true, false);

    QWidget window;
    QtUIBase::AQObjects::add(&window, QStringLiteral("consumer window"));
    auto* save = new QtUIBase::AQAction(QStringLiteral("Save Action"), QStringLiteral("Save"), &window, true);
    QObject::connect(save, &QtUIBase::AQAction::ATriggered, [] {});

    if (!QtUIBase::AQOpenScriptFileForRecord(QString::fromLocal8Bit(argv[1]), QStringLiteral("2")))
        return 1;
    save->trigger();
    QtUIBase::AQCloseScript();
    return 0;
}
