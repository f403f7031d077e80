// Cost of recording a line, of registry lookups and of replaying a script.
#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQValueInputs.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace QtUIBase;

namespace {

QTemporaryDir& tempDir()
{
    static QTemporaryDir dir;
    return dir;
}

// A window with `count` registered filler objects, then the objects used.
struct Registry
{
    explicit Registry(int count)
    {
        window = std::make_unique<QObject>();
        AQObjects::add(window.get(), QStringLiteral("Filler_Window"));
        for (int i = 0; i < count; ++i)
            AQObjects::add(new QObject(window.get()), QStringLiteral("Filler_%1").arg(i));
        target = std::make_unique<QWidget>();
        AQObjects::add(target.get(), QStringLiteral("Main_Window"));
        for (int i = 0; i < 10; ++i) {
            auto* action = new AQAction(QStringLiteral("Action_%1").arg(i), QStringLiteral("Action"), target.get(), true);
            action->setCheckable(true);
            QObject::connect(action, &AQAction::ATriggered, [] {});
            actions.push_back(action);
        }
        button = new AQPushButton(QStringLiteral("Run"), QStringLiteral("Run"), target.get(), true);
        QObject::connect(button, &AQPushButton::AClicked, [](bool) {});
        check = new AQCheckBox(QStringLiteral("Grid"), QStringLiteral("Grid"), target.get(), true);
        spin = new AQSpinBox(target.get(), QStringLiteral("Cells"), true);
        spin->setRange(0, 1000);
        combo = new AQComboBox(QStringLiteral("Material"), target.get(), true);
        combo->addItems({QStringLiteral("Copper"), QStringLiteral("FR-4")});
    }
    std::unique_ptr<QObject> window;
    std::unique_ptr<QWidget> target;
    std::vector<AQAction*> actions;
    AQPushButton* button = nullptr;
    AQCheckBox* check = nullptr;
    AQSpinBox* spin = nullptr;
    AQComboBox* combo = nullptr;
};

void BM_RecordLine(benchmark::State& state)
{
    const QString base = tempDir().filePath(QStringLiteral("bench"));
    AQInitializeNonVelmoraScripting(QFile::encodeName(base).constData(), false, true);
    Registry registry(50);
    AQOpenScriptFileForRecord(tempDir().filePath(QStringLiteral("record.scr")), QStringLiteral("2"));
    const QStringList args{QStringLiteral("on"), QStringLiteral("two words"), QStringLiteral("-1.5")};
    for (auto _ : state)
        AQScripts::recordSignal(registry.actions[5], QStringLiteral("clicked"), args);
    AQCloseScript();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RecordLine);

// The same bytes written straight to two flushed text streams: the floor
// any recorder pays for journal and script.
void BM_WriteLineDirect(benchmark::State& state)
{
    QFile journal(tempDir().filePath(QStringLiteral("direct.jrl")));
    QFile script(tempDir().filePath(QStringLiteral("direct.scr")));
    journal.open(QIODevice::WriteOnly | QIODevice::Truncate);
    script.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QTextStream j(&journal);
    QTextStream s(&script);
    const QString line = QStringLiteral("QtSignal Main_Window Action_5 clicked on \"two words\" \"-1.5\"");
    for (auto _ : state) {
        j << line << '\n';
        j.flush();
        s << line << '\n';
        s.flush();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_WriteLineDirect);

void BM_FindByParentAndName(benchmark::State& state)
{
    Registry registry(static_cast<int>(state.range(0)));
    const QString parent = QStringLiteral("Main_Window");
    const QString name = QStringLiteral("Action_9");
    for (auto _ : state)
        benchmark::DoNotOptimize(AQObjects::find(parent, name));
}
BENCHMARK(BM_FindByParentAndName)->Arg(50)->Arg(5000);

void BM_FindByName(benchmark::State& state)
{
    Registry registry(static_cast<int>(state.range(0)));
    const QString name = QStringLiteral("Action_9");
    for (auto _ : state)
        benchmark::DoNotOptimize(AQObjects::find(name));
}
BENCHMARK(BM_FindByName)->Arg(50)->Arg(5000);

void BM_FindByObject(benchmark::State& state)
{
    Registry registry(static_cast<int>(state.range(0)));
    const QObject* obj = registry.actions.back();
    for (auto _ : state)
        benchmark::DoNotOptimize(AQObjects::find(obj));
}
BENCHMARK(BM_FindByObject)->Arg(50)->Arg(5000);

constexpr int ScriptLines = 10000;

QString replayScript()
{
    const QString path = tempDir().filePath(QStringLiteral("replay.scr"));
    if (QFile::exists(path))
        return path;
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QTextStream out(&file);
    out << "#\tfile: replay.scr\n#\tstart time: Sun Nov 22 2026 10:00:00\n#\tversion: 2\n";
    // Five kinds of operation in turn: action, button, check box, spin box,
    // combo box.
    for (int i = 0; i < ScriptLines; ++i) {
        switch (i % 5) {
        case 0:
            out << "QtSignal Main_Window Action_" << (i % 10) << " triggered " << (i / 5 % 2) << '\n';
            break;
        case 1:
            out << "QtSignal Main_Window Run clicked\n";
            break;
        case 2:
            out << "QtSignal Main_Window Grid clicked " << (i / 5 % 2 ? "true" : "false") << '\n';
            break;
        case 3:
            out << "QtSignal Main_Window Cells valueChanged " << (i % 1000) << '\n';
            break;
        default:
            out << "QtSignal Main_Window Material CurrentIndexChanged " << (i / 5 % 2 ? "FR-4" : "Copper") << '\n';
        }
    }
    return path;
}

void BM_Replay10000Lines(benchmark::State& state)
{
    AQInitializeNonVelmoraScripting("unused", true, false);
    Registry registry(static_cast<int>(state.range(0)));
    const QString script = replayScript();
    for (auto _ : state)
        AQOpenScriptFileForReplay(script, 0, 2);
    state.SetItemsProcessed(state.iterations() * ScriptLines);
}
BENCHMARK(BM_Replay10000Lines)->Arg(50)->Arg(5000)->Unit(benchmark::kMillisecond);

// The same 10,000 operations called directly on the widgets.
void BM_Direct10000Operations(benchmark::State& state)
{
    Registry registry(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        for (int i = 0; i < ScriptLines; ++i) {
            switch (i % 5) {
            case 0:
                registry.actions[i % 10]->scriptReplay(QStringList{QString::number(i / 5 % 2)});
                break;
            case 1:
                registry.button->click();
                break;
            case 2:
                registry.check->setChecked(i / 5 % 2);
                Q_EMIT registry.check->AClicked(i / 5 % 2);
                break;
            case 3:
                registry.spin->setValue(i % 1000);
                break;
            default:
                registry.combo->setCurrentIndex(i / 5 % 2);
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * ScriptLines);
}
BENCHMARK(BM_Direct10000Operations)->Arg(50)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
