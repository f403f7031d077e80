#include <Script/AQObjects.h>
#include <Script/AQScripts.h>

#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void registrationName_data();
    void registrationName();
    void twoNameLookup_data();
    void twoNameLookup();
    void fieldWindowsPreferLastRegistered();
    void caseInsensitiveOption();
    void destroyingRemovesChildrenAndShiftsIds();
    void explicitRemoveTakesRegisteredChildrenStillAlive();
    void getObjectPtrByIdAndHint();
    void outOfRangeIds();
    void setParentObjectKeepsRegisteredParent();
    void dialogActive();
    void lookupsAgreeWithRegistrationOrderScan();

private:
    std::vector<std::unique_ptr<QObject>> m_owned;
    int m_baseCount = 0;

    QObject* make(const QString& name, QObject* parent = nullptr)
    {
        auto* obj = new QObject(parent);
        if (!parent)
            m_owned.emplace_back(obj);
        AQObjects::add(obj, name);
        return obj;
    }
};

void tst_AQObjects::init()
{
    m_baseCount = AQObjects::count();
    AQScripts::setCaseInsensitiveFind(false);
}

void tst_AQObjects::cleanup()
{
    m_owned.clear();
    AQScripts::setCaseInsensitiveFind(false);
    QCOMPARE(AQObjects::count(), m_baseCount);
}

void tst_AQObjects::registrationName_data()
{
    QTest::addColumn<QString>("initialName");
    QTest::addColumn<QString>("scriptName");
    QTest::addColumn<QString>("expectedName");

    QTest::newRow("blank becomes underscore") << "" << "Apply Button" << "Apply_Button";
    QTest::newRow("every blank") << "" << " a  b " << "_a__b_";
    QTest::newRow("empty keeps object name") << "kept" << "" << "kept";
    QTest::newRow("name replaces object name") << "old" << "new" << "new";
}

void tst_AQObjects::registrationName()
{
    QFETCH(QString, initialName);
    QFETCH(QString, scriptName);
    QFETCH(QString, expectedName);

    auto obj = std::make_unique<QObject>();
    obj->setObjectName(initialName);
    AQObjects::add(obj.get(), scriptName);
    QCOMPARE(obj->objectName(), expectedName);
    const int id = AQObjects::find(expectedName);
    QCOMPARE(id, AQObjects::count() - 1);
    QCOMPARE(AQObjects::find(obj.get()), id);
    QCOMPARE(AQObjects::getObjectInstanceName(id), expectedName);
    if (scriptName.contains(QLatin1Char(' ')))
        QCOMPARE(AQObjects::find(scriptName), -1);
}

void tst_AQObjects::twoNameLookup_data()
{
    QTest::addColumn<QString>("parentName");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("expectedChild"); // index into the children made below, -1 none

    QTest::newRow("direct child") << "Window" << "Apply" << 0;
    QTest::newRow("grandchild is not a child") << "Window" << "Inner" << -1;
    QTest::newRow("grandchild under its parent") << "Panel" << "Inner" << 2;
    QTest::newRow("same name, second parent") << "Second" << "Apply" << 3;
    QTest::newRow("unknown parent") << "Nowhere" << "Apply" << -1;
    QTest::newRow("unknown child") << "Window" << "Nothing" << -1;
    QTest::newRow("names are case-sensitive") << "window" << "Apply" << -1;
}

void tst_AQObjects::twoNameLookup()
{
    QFETCH(QString, parentName);
    QFETCH(QString, name);
    QFETCH(int, expectedChild);

    QObject* window = make(QStringLiteral("Window"));
    QObject* panel = make(QStringLiteral("Panel"), window);
    QObject* second = make(QStringLiteral("Second"));
    const QList<QObject*> children{make(QStringLiteral("Apply"), window), panel,
                                   make(QStringLiteral("Inner"), panel), make(QStringLiteral("Apply"), second)};
    const int id = AQObjects::find(parentName, name);
    if (expectedChild < 0)
        QCOMPARE(id, -1);
    else
        QCOMPARE(AQObjects::getObjectPtr(id), children.at(expectedChild));
    // One name finds the first registered; an object pointer picks the parent.
    QCOMPARE(AQObjects::getObjectPtr(AQObjects::find(QStringLiteral("Apply"))), children.at(0));
    QCOMPARE(AQObjects::getObjectPtr(AQObjects::find(second, QStringLiteral("Apply"))), children.at(3));
}

void tst_AQObjects::fieldWindowsPreferLastRegistered()
{
    for (const QString windowName : {"EMFieldWindow", "ThermalFieldWindow", "MeshWindow"}) {
        const bool lastWins = windowName != QLatin1String("MeshWindow");
        QObject* older = make(windowName);
        QObject* olderChild = make(QStringLiteral("Plot"), older);
        QObject* newer = make(windowName);
        QObject* newerChild = make(QStringLiteral("Plot"), newer);

        const int id = AQObjects::find(windowName, QStringLiteral("Plot"));
        QCOMPARE(AQObjects::getObjectPtr(id), lastWins ? newerChild : olderChild);
        QCOMPARE(AQObjects::getObjectPtr(AQObjects::forwardfindobjectID(windowName, QStringLiteral("Plot"))), olderChild);
        QCOMPARE(AQObjects::getObjectPtr(AQObjects::reversefindobjectID(windowName, QStringLiteral("Plot"))), newerChild);
        m_owned.clear();
    }
}

void tst_AQObjects::caseInsensitiveOption()
{
    QObject* dialog = make(QStringLiteral("SetupDialog"));
    QObject* button = make(QStringLiteral("ApplyButton"), dialog);
    for (const bool option : {false, true}) {
        AQScripts::setCaseInsensitiveFind(option);
        const int id = AQObjects::find(QStringLiteral("setupdialog"), QStringLiteral("applybutton"));
        QCOMPARE(AQObjects::getObjectPtr(id), option ? button : nullptr);
        QCOMPARE(id >= 0, option);
        // Single-name lookups never ignore case.
        QCOMPARE(AQObjects::find(QStringLiteral("applybutton")), -1);
        QCOMPARE(AQObjects::getObjectPtr(0, QStringLiteral("applybutton")), nullptr);
    }
}

void tst_AQObjects::destroyingRemovesChildrenAndShiftsIds()
{
    QObject* before = make(QStringLiteral("Before"));
    auto* dialog = new QDialog;
    AQObjects::add(dialog, QStringLiteral("Dialog"));
    AQObjects::add(dialog, QStringLiteral("Dialog")); // both entries go with it
    auto* ok = new QPushButton(dialog);
    AQObjects::add(ok, QStringLiteral("OK"));
    QObject* after = make(QStringLiteral("After"));

    const int afterId = AQObjects::find(after);
    delete dialog;
    QCOMPARE(AQObjects::find(QStringLiteral("Dialog")), -1);
    QCOMPARE(AQObjects::find(QStringLiteral("OK")), -1);
    QCOMPARE(AQObjects::find(after), afterId - 3);
    QVERIFY(AQObjects::find(before) >= 0);
}

void tst_AQObjects::explicitRemoveTakesRegisteredChildrenStillAlive()
{
    QObject* window = make(QStringLiteral("Window"));
    QObject* child = make(QStringLiteral("Child"), window);
    QObject* grandChild = make(QStringLiteral("GrandChild"), child);
    QObject* other = make(QStringLiteral("Other"));

    AQObjects::remove(window);
    QCOMPARE(AQObjects::find(window), -1);
    QCOMPARE(AQObjects::find(child), -1);
    QCOMPARE(AQObjects::find(grandChild), -1);
    QVERIFY(AQObjects::find(other) >= 0);
    // The children's own destruction later finds nothing left to remove.
    delete child;
    QVERIFY(AQObjects::find(other) >= 0);
}

void tst_AQObjects::getObjectPtrByIdAndHint()
{
    QObject* first = make(QStringLiteral("ToolBar_DropButton"));
    QObject* second = make(QStringLiteral("Second"));
    const int secondId = AQObjects::find(second);
    QCOMPARE(AQObjects::getObjectPtr(secondId), second);
    // A name overrides the id.
    QCOMPARE(AQObjects::getObjectPtr(secondId, QStringLiteral("ToolBar_DropButton")), first);
    QCOMPARE(AQObjects::getObjectPtr(secondId, QStringLiteral("Missing")), nullptr);
}

void tst_AQObjects::outOfRangeIds()
{
    for (const int id : {AQObjects::count(), AQObjects::count() + 5}) {
        QCOMPARE(AQObjects::getObjectInstanceName(id), QString());
        QCOMPARE(AQObjects::getObjectPtr(id), nullptr);
        QCOMPARE(AQObjects::getParentObjectPtr(id), nullptr);
        AQObjects::setParentObject(id, this); // must not crash
    }
    QCOMPARE(AQObjects::getObjectPtr(-1), nullptr);
}

void tst_AQObjects::setParentObjectKeepsRegisteredParent()
{
    QObject* registered = make(QStringLiteral("Registered"));
    QObject* child = make(QStringLiteral("Child"), registered);
    QObject* stranger = make(QStringLiteral("Stranger"));

    AQObjects::setParentObject(AQObjects::find(child), stranger);
    QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(child)), registered);

    // An unregistered Qt parent is replaced.
    QObject unregistered;
    auto* orphan = new QObject(&unregistered);
    AQObjects::add(orphan, QStringLiteral("Orphan"));
    AQObjects::setParentObject(AQObjects::find(orphan), stranger);
    QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(orphan)), stranger);
    // Removal follows the parent given here.
    AQObjects::remove(stranger);
    QCOMPARE(AQObjects::find(orphan), -1);
}

void tst_AQObjects::dialogActive()
{
    QDialog dialog;
    AQObjects::add(&dialog, QStringLiteral("Active Dialog"));
    QVERIFY(!dialog.isVisible());
    QVERIFY(AQObjects::dialogActive(QStringLiteral("Active_Dialog")));
    QVERIFY(dialog.isVisible());
    QVERIFY(!AQObjects::dialogActive(QStringLiteral("Missing_Dialog")));
    // A registered object that is no widget is not "active".
    make(QStringLiteral("PlainObject"));
    QVERIFY(!AQObjects::dialogActive(QStringLiteral("PlainObject")));
}

// Reference answers computed from the entries in registration order only.
namespace {
int scanName(const QString& name)
{
    for (int i = 0; i < AQObjects::count(); ++i)
        if (AQObjects::getObjectInstanceName(i) == name)
            return i;
    return -1;
}

int scanPair(const QString& parentName, const QString& name, bool fromLast)
{
    const int n = AQObjects::count();
    const QObject* parent = nullptr;
    for (int k = 0; k < n && !parent; ++k) {
        const int i = fromLast ? n - 1 - k : k;
        if (AQObjects::getObjectInstanceName(i) == parentName)
            parent = AQObjects::getObjectPtr(i);
    }
    for (int k = 0; k < n && parent; ++k) {
        const int i = fromLast ? n - 1 - k : k;
        if (AQObjects::getParentObjectPtr(i) == parent && AQObjects::getObjectInstanceName(i) == name)
            return i;
    }
    return -1;
}
} // namespace

void tst_AQObjects::lookupsAgreeWithRegistrationOrderScan()
{
    QRandomGenerator random(20261122);
    const QStringList names{"A", "B", "C", "EMFieldWindow", "D"};
    std::vector<QPointer<QObject>> alive;
    auto owner = std::make_unique<QObject>(); // unregistered: roots count as parentless
    for (int step = 0; step < 3000; ++step) {
        const int op = random.bounded(10);
        const QString name = names.at(random.bounded(names.size()));
        QObject* some = alive.empty() ? nullptr : alive[random.bounded(int(alive.size()))].data();
        if (op < 4 || alive.empty()) {
            QObject* obj = nullptr;
            if (some && random.bounded(2)) {
                obj = new QObject(some);
            } else {
                obj = new QObject(owner.get());
            }
            AQObjects::add(obj, name);
            alive.emplace_back(obj);
        } else if (op == 4 && some) {
            some->setObjectName(name); // renamed after registration
        } else if (op == 5 && some) {
            delete some;
        } else if (op == 6 && some) {
            AQObjects::remove(some);
        } else if (op == 7 && some) {
            AQObjects::add(some, QString()); // a second entry
        } else {
            const QString other = names.at(random.bounded(names.size()));
            QCOMPARE(AQObjects::find(name), scanName(name));
            QCOMPARE(AQObjects::forwardfindobjectID(other, name), scanPair(other, name, false));
            QCOMPARE(AQObjects::reversefindobjectID(other, name), scanPair(other, name, true));
            if (some) {
                int expected = -1;
                for (int i = 0; i < AQObjects::count() && expected < 0; ++i)
                    if (AQObjects::getObjectPtr(i) == some)
                        expected = i;
                QCOMPARE(AQObjects::find(some), expected);
            }
        }
    }
    owner.reset();
}

QTEST_MAIN(tst_AQObjects)
#include "tst_aqobjects.moc"
