#include "WrapperFixture.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Settings/AQSettings.h>

#include <QFile>
#include <QtTest>

using namespace QtUIBase;

namespace {
const QString RootHead = QStringLiteral("QtSignal Root ");
}

WrapperFixture::WrapperFixture(bool journal)
    : m_sandbox(std::make_unique<ScriptSandbox>(journal))
    , m_root(std::make_unique<QWidget>())
{
    AQObjects::add(m_root.get(), QStringLiteral("Root"));
}

WrapperFixture::~WrapperFixture()
{
    m_root.reset();
    m_sandbox.reset();
}

void WrapperFixture::showActive(const QSize& size)
{
    m_root->resize(size);
    m_root->show();
    QApplication::setActiveWindow(m_root.get());
    QVERIFY(QTest::qWaitForWindowActive(m_root.get()));
}

void WrapperFixture::startRecording()
{
    QVERIFY(AQOpenScriptFileForRecord(m_sandbox->path(QStringLiteral("record.scr")), QStringLiteral("2")));
}

QStringList WrapperFixture::stopRecording()
{
    AQStopScriptRecording();
    QStringList records;
    const QStringList lines = ScriptSandbox::recordLines(m_sandbox->path(QStringLiteral("record.scr")));
    for (const QString& line : lines)
        records << (line.startsWith(RootHead) ? line.mid(RootHead.size()) : line);
    return records;
}

bool WrapperFixture::replay(const QStringList& body)
{
    QStringList lines;
    for (const QString& line : body) {
        const bool complete = line.startsWith(QLatin1String("QtSignal")) || line.startsWith(QLatin1String("QtFillin"));
        lines << (complete ? line : RootHead + line);
    }
    QString script = m_sandbox->path(QStringLiteral("replay.scr"));
    QFile::remove(m_sandbox->path(QStringLiteral("fixedScriptOperation.txt")));
    AQSettings::setUIAScriptPath(script);
    m_sandbox->writeScript(script, lines);
    return AQOpenScriptFileForReplay(script, 0, 2);
}

QString WrapperFixture::fixedScriptReport() const
{
    return ScriptSandbox::readAll(m_sandbox->path(QStringLiteral("fixedScriptOperation.txt")));
}
