#include <Script/AQObjects.h>
#include <Script/AQScripts.h>

#include <QDialog>
#include <QPointer>
#include <QRandomGenerator>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
// Reference answers computed from the entries in registration order only.
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

class tst_AQObjects : public QObject
{
    Q_OBJECT

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

private Q_SLOTS:
    void init() { m_baseCount = AQObjects::count(); }

    void cleanup()
    {
        m_owned.clear();
        AQScripts::setCaseInsensitiveFind(false);
        QCOMPARE(AQObjects::count(), m_baseCount);
    }

    void registrationName_data()
    {
        QTest::addColumn<QString>("initialName");
        QTest::addColumn<QString>("scriptName");
        QTest::addColumn<QString>("expectedName");
        QTest::newRow("every blank becomes underscore") << "old" << " Apply  Button" << "_Apply__Button";
        QTest::newRow("empty keeps object name") << "kept" << "" << "kept";
    }

    void registrationName()
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
    }

    void fieldWindowsPreferLastRegistered()
    {
        // Two-name lookups are checked against a scan below; here: which
        // parent of a name counts, and the lookup under a parent object.
        for (const QString windowName : {"EMFieldWindow", "ThermalFieldWindow", "MeshWindow"}) {
            QObject* older = make(windowName);
            QObject* olderChild = make("Plot", older);
            QObject* newerChild = make("Plot", make(windowName));
            const bool lastWins = windowName != QLatin1String("MeshWindow");
            QCOMPARE(AQObjects::getObjectPtr(AQObjects::find(windowName, "Plot")), lastWins ? newerChild : olderChild);
            QCOMPARE(AQObjects::getObjectPtr(AQObjects::find(older, "Plot")), olderChild);
            m_owned.clear();
        }
    }

    void caseInsensitiveOption()
    {
        QObject* button = make("ApplyButton", make("SetupDialog"));
        for (const bool option : {false, true}) {
            AQScripts::setCaseInsensitiveFind(option);
            QCOMPARE(AQObjects::getObjectPtr(AQObjects::find(QString("setupdialog"), "applybutton")),
                     option ? button : nullptr);
            // Single-name lookups never ignore case.
            QCOMPARE(AQObjects::find(QStringLiteral("applybutton")), -1);
            QCOMPARE(AQObjects::getObjectPtr(0, "applybutton"), nullptr);
        }
    }

    void removalTakesRegisteredChildrenAndShiftsIds()
    {
        QObject* before = make("Before");
        auto* dialog = new QDialog;
        AQObjects::add(dialog, "Dialog");
        AQObjects::add(dialog, "Dialog"); // both entries go with it
        QObject* child = make("Child", dialog);
        QObject* grandChild = make("GrandChild", child);
        QObject* after = make("After");

        const int afterId = AQObjects::find(after);
        AQObjects::remove(dialog); // the children are still alive
        QCOMPARE(AQObjects::find(child), -1);
        QCOMPARE(AQObjects::find(grandChild), -1);
        QCOMPARE(AQObjects::find(after), afterId - 4);
        QVERIFY(AQObjects::find(before) >= 0);
        AQObjects::add(dialog, "Dialog");
        delete dialog; // destruction unregisters as well
        QCOMPARE(AQObjects::find(QStringLiteral("Dialog")), -1);
        QCOMPARE(AQObjects::find(after), afterId - 4);
    }

    void getObjectPtrByIdNameAndRange()
    {
        QObject* first = make("ToolBar_DropButton");
        QObject* second = make("Second");
        const int secondId = AQObjects::find(second);
        QCOMPARE(AQObjects::getObjectPtr(secondId), second);
        // A name overrides the id.
        QCOMPARE(AQObjects::getObjectPtr(secondId, "ToolBar_DropButton"), first);
        QCOMPARE(AQObjects::getObjectPtr(secondId, "Missing"), nullptr);
        for (const int id : {-1, AQObjects::count()}) {
            QCOMPARE(AQObjects::getObjectInstanceName(id), QString());
            QCOMPARE(AQObjects::getObjectPtr(id), nullptr);
            QCOMPARE(AQObjects::getParentObjectPtr(id), nullptr);
            AQObjects::setParentObject(id, this); // must not crash
        }
    }

    void setParentObjectKeepsRegisteredParent()
    {
        QObject* registered = make("Registered");
        QObject* child = make("Child", registered);
        QObject* stranger = make("Stranger");
        AQObjects::setParentObject(AQObjects::find(child), stranger);
        QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(child)), registered);

        // An unregistered Qt parent is replaced, and removal follows the new one.
        QObject unregistered;
        auto* orphan = new QObject(&unregistered);
        AQObjects::add(orphan, "Orphan");
        AQObjects::setParentObject(AQObjects::find(orphan), stranger);
        QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(orphan)), stranger);
        AQObjects::remove(stranger);
        QCOMPARE(AQObjects::find(orphan), -1);
    }

    void dialogActive()
    {
        QDialog dialog;
        AQObjects::add(&dialog, "Active Dialog");
        QVERIFY(AQObjects::dialogActive("Active_Dialog"));
        QVERIFY(dialog.isVisible());
        QVERIFY(!AQObjects::dialogActive("Missing_Dialog"));
        make("PlainObject"); // registered, but no widget to show
        QVERIFY(!AQObjects::dialogActive("PlainObject"));
    }

    void lookupsAgreeWithRegistrationOrderScan()
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
                auto* obj = new QObject(some && random.bounded(2) ? some : owner.get());
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
    }
};

QTEST_MAIN(tst_AQObjects)
#include "tst_aqobjects.moc"
