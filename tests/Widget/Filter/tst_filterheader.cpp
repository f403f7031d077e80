#include "FilterOracle.h"
#include "WrapperFixture.h"

#include <Script/AQScripts.h>
#include <Widget/Filter/AQFilterComboBox.h>
#include <Widget/Filter/AQFilterDialog.h>
#include <Widget/Filter/AQFilterHeaderView.h>
#include <Widget/Filter/AQFilterLineEdit.h>
#include <Widget/Filter/AQSortMultiFilterProxyModel.h>
#include <Widget/Filter/FilterKind.h>
#include <Widget/Filter/OrvexFilterHeaderView.h>
#include <Widget/Filter/OrvexSortFilterProxyModel.h>
#include <Widget/Table/OrvexAscendingHeaderView.h>

#include <QMenu>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {

const QList<int> Kinds{Text, Real, Integer, Region, PassFail, OnOff};

// Column i holds kind i: names, reals, ints, points, pass and on flags.
QStandardItemModel* kindTable(const QList<int>& kinds, QObject* parent)
{
    return FilterOracle::table(kinds,
                               {{"abc", 1.0, 1, QPointF(0, 0), true, true},
                                {"a1c", 2.0, 2, QPointF(10, 5), false, true},
                                {"1.5", 2.5, 3, QPointF(11, 5), true, false},
                                {"", 3.0, 4, QPointF(5, 6), false, false},
                                {"xbc", 4.0, 5, QPointF(1, 1), true, true}},
                               parent);
}

const QStringList Stars{"*", "*", "*", "*", "*", "*"};

} // namespace

/// The filter header on a real table over the multi-filter proxy.
class tst_FilterHeader : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    QStandardItemModel* m_model = nullptr;
    AQSortMultiFilterProxyModel* m_proxy = nullptr;
    QTableView* m_view = nullptr;
    AQFilterHeaderView* m_header = nullptr;

    AQFilterLineEdit* edit(int column) const { return m_header->filters().at(column)->filterLineEdit(); }

    QStringList shown() const { return FilterOracle::firstColumn(m_view->model()); }

    void typeInto(int column, const QString& text)
    {
        edit(column)->setFocus();
        QTest::keyClick(edit(column), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit(column), text);
        QTest::keyClick(edit(column), Qt::Key_Return);
    }

    // Opens the dialog of @p column, picks the condition @p downs items
    // down and types @p values into its fields.
    AQFilterDialog* useDialog(int column, int downs, const QStringList& values)
    {
        QTest::mouseClick(edit(column), Qt::LeftButton);
        auto* dialog = edit(column)->findChild<AQFilterDialog*>("filter_dialog");
        for (int i = 0; dialog && i < downs; ++i)
            QTest::keyClick(dialog->findChild<QComboBox*>("filter_dialog_condition"), Qt::Key_Down);
        for (int i = 0; dialog && i < values.size(); ++i)
            QTest::keyClicks(dialog->findChildren<QLineEdit*>().value(i), values.at(i));
        return dialog;
    }

    void press(AQFilterDialog* dialog, const QString& button)
    {
        QPointer<AQFilterDialog> alive(dialog);
        QTest::mouseClick(dialog->findChild<QPushButton*>("filter_dialog_" + button), Qt::LeftButton);
        QTRY_VERIFY(!alive);
    }

private Q_SLOTS:
    void init()
    {
        m_fx = std::make_unique<WrapperFixture>();
        m_model = kindTable(Kinds, m_fx->root());
        m_proxy = new AQSortMultiFilterProxyModel(m_fx->root());
        m_proxy->setSourceModel(m_model);
        m_view = new QTableView(m_fx->root());
        m_header = new AQFilterHeaderView("filterHeader", m_fx->root(), true);
        m_header->setAnimationDuration(0);
        m_view->setHorizontalHeader(m_header);
        m_view->setModel(m_proxy);
        connect(m_header, &AQFilterHeaderView::filterChanged, m_proxy,
                qOverload<int, const QString&>(&AQSortMultiFilterProxyModel::setFilter));
        m_view->resize(700, 300);
        m_fx->showActive(QSize(700, 300));
    }

    void cleanup()
    {
        m_fx.reset();
        QCOMPARE(AQScripts::isRecordingDisabled(), false);
    }

    // getFilter, resetFilter (-1, or 1 to 5; 0 is left alone), the history.
    void filterOperations_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<int>("column");
        QTest::addColumn<QStringList>("answer");
        QTest::addColumn<QString>("texts");
        const auto row = [](const char* name, const char* op, int column, const QStringList& answer, const char* texts) {
            QTest::newRow(name) << op << column << answer << texts;
        };
        row("getFilter -1", "get", -1, Stars, "*,*,*,*,*,*");
        row("getFilter 0 answers nothing", "get", 0, {}, "*,*,*,*,*,*");
        row("getFilter 5", "get", 5, {"*"}, "*,*,*,*,*,*");
        row("getFilter 6", "get", 6, {}, "*,*,*,*,*,*");
        row("resetFilter 0 ignored", "reset", 0, {}, "*,*,*,*,*,*");
        row("resetFilter 2", "reset", 2, {}, "*,*,,*,*,*");
        row("resetFilter -1", "reset", -1, {}, ",,,,,");
        row("setFilterList 1", "list", 1, {"*", "a", "b"}, "*,*,*,*,*,*");
        row("setFilterList 6", "list", 6, {}, "*,*,*,*,*,*");
        row("resetFilterHistory 1", "history", 1, {}, "*,,*,*,*,*");
    }

    void filterOperations()
    {
        QFETCH(QString, operation);
        QFETCH(int, column);
        QFETCH(QStringList, answer);
        QFETCH(QString, texts);
        m_header->setFilterList(1, {"b", "a"});
        QStringList got = operation == "get" ? m_header->getFilter(column) : QStringList();
        if (operation == "reset")
            m_header->resetFilter(column);
        if (operation == "history")
            m_header->resetFilterHistory(column);
        else if (operation == "list" && m_header->setFilterList(column, {"b", "a"}))
            for (int i = 0; i < m_header->filters().at(column)->count(); ++i)
                got << m_header->filters().at(column)->itemText(i);
        QCOMPARE(got, answer);
        QCOMPARE(m_header->getFilter(-1).join(","), texts);
        QCOMPARE(m_header->filters().at(1)->count(), operation == "history" ? 0 : 3);
    }

    // Typed text (column 0, announced as a pattern) and dialog conditions
    // (announced as written, recorded as one line).
    void filterInput_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("downs");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("announced");
        QTest::addColumn<QStringList>("rows");
        const auto row = [](const char* name, int column, int downs, const QStringList& values, const char* button,
                            const char* title, const char* text, const QString& announced, const QStringList& rows) {
            QTest::newRow(name) << column << downs << values << button << title << text << announced << rows;
        };
        const QStringList all{"abc", "a1c", "1.5", "", "xbc"};
        row("typed ? and *", 0, 0, {"a?c*"}, "", "", "a?c*", "^$|^a.{1,1}c.*$", {"abc", "a1c", ""});
        row("typed characters keep their meaning", 0, 0, {"[ax]bc"}, "", "", "[ax]bc", "^$|^[ax]bc$",
            {"abc", "", "xbc"});
        row("real in range", 1, 4, {"1.5", "3"}, "ok", "Numeric Filter:", ">1.5,<3", ">1.5,<3", {"a1c", "1.5"});
        row("range with one value", 1, 4, {"1.5"}, "ok", "Numeric Filter:", "", "", all);
        row("comma refused", 1, 1, {"2,5"}, "ok", "Numeric Filter:", "=25", "=25", {});
        row("integer less than", 2, 2, {"3"}, "ok", "Numeric Filter:", "<3", "<3", {"abc", "a1c"});
        row("region", 3, 0, {"0", "0", "10", "5"}, "ok", "Region Filter:", "(0,0):(10,5)", "(0,0):(10,5)",
            {"abc", "a1c", "xbc"});
        row("pass untouched", 4, 0, {}, "ok", "Pass/Fail Filter:", "PASS", "PASS", {"abc", "1.5", "xbc"});
        row("fail", 4, 1, {}, "ok", "Pass/Fail Filter:", "FAIL", "FAIL", {"a1c", ""});
        row("on untouched", 5, 0, {}, "ok", "On/Off Filter:", "ON", "ON", {"abc", "a1c", "xbc"});
        row("cancel", 5, 1, {}, "cancel", "On/Off Filter:", "*", QString(), all);
    }

    void filterInput()
    {
        QFETCH(int, column);
        QFETCH(int, downs);
        QFETCH(QStringList, values);
        QFETCH(QString, button);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QFETCH(QString, announced);
        QFETCH(QStringList, rows);
        QCOMPARE(m_header->getFilter(-1), Stars);
        QCOMPARE(edit(column)->isReadOnly(), column != 0);
        QSignalSpy announcements(m_header, &AQFilterHeaderView::filterChanged);
        if (column == 0) {
            typeInto(0, values.first());
        } else {
            AQFilterDialog* dialog = useDialog(column, downs, values);
            QVERIFY(dialog);
            QCOMPARE(dialog->windowTitle(), title);
            if (auto* second = dialog->findChild<QLineEdit*>("filter_dialog_value2")) {
                QCOMPARE(second->isVisible(), downs == 4);
                QCOMPARE(dialog->findChild<QLineEdit*>("filter_dialog_value1")->isEnabled(), downs != 0);
            }
            m_fx->startRecording();
            press(dialog, button);
            const QString line = QString("QtSignal filterHeader_filter_%1 filterHeader_filter_%1_text filterChanged")
                                     .arg(column);
            const QString argument = text.isEmpty() ? "" : " " + (text.at(0).isLetter() ? text : '"' + text + '"');
            QCOMPARE(m_fx->stopRecording().join(""), button == "ok" ? line + argument : "");
            QCOMPARE(m_header->filters().at(column)->findText(text) >= 0, button == "ok" && !text.isEmpty());
        }
        QCOMPARE(edit(column)->text(), text);
        QCOMPARE(announcements.isEmpty() ? QVariantList() : announcements.last(),
                 announced.isNull() ? QVariantList() : (QVariantList{column, announced}));
        QCOMPARE(shown(), rows);
    }

    // Typing, a dialog condition and "Clear Filter" from the context menu,
    // recorded, then replayed on a fresh header: the same rows again.
    void recordedSessionReplays()
    {
        m_fx->startRecording();
        QStringList menu;
        QTimer::singleShot(0, this, [&] {
            auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(popup);
            for (QAction* action : popup->actions())
                menu << (action->isSeparator() ? "-" : action->text());
            QTest::mouseClick(popup, Qt::LeftButton, {}, popup->actionGeometry(popup->actions().first()).center());
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2), edit(0)->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(edit(0), &event);
        QCOMPARE(menu.mid(0, 2), (QStringList{"Clear Filter", "-"}));
        QCOMPARE(shown(), QStringList{""}); // the empty text passes empty cells only
        typeInto(0, "a*");
        QCOMPARE(shown(), (QStringList{"abc", "a1c", ""}));
        press(useDialog(1, 4, {"0", "3"}), "ok");
        press(useDialog(4, 1, {}), "ok");
        const QStringList script = m_fx->stopRecording();
        QCOMPARE(shown(), QStringList{"a1c"});

        m_header->resetFilter(-1);
        m_proxy->resetFilter(-1);
        QVERIFY(m_fx->replay(script));
        QCOMPARE(m_fx->fixedScriptReport(), QString());
        QCOMPARE(shown(), QStringList{"a1c"});
        QCOMPARE(m_header->getFilter(-1), (QStringList{"a*", ">0,<3", "", "", "FAIL", ""}));
    }

    void modelResetChangesKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("text becomes disabled") << int(Disabled) << false << true;
        QTest::newRow("text becomes real") << int(Real) << true << true;
        QTest::newRow("unknown kind keeps the edit as it was") << 9 << true << false;
    }

    void modelResetChangesKind()
    {
        QFETCH(int, kind);
        QFETCH(bool, enabled);
        QFETCH(bool, readOnly);
        // A new source model resets the proxy, and so the header's model.
        m_proxy->setSourceModel(kindTable({kind, Real, Integer, Region, PassFail, OnOff}, m_fx->root()));
        QCOMPARE(m_header->filters().at(0)->isEnabled(), enabled);
        QCOMPARE(edit(0)->isReadOnly(), readOnly);
        QCOMPARE(edit(0)->kind(), kind);
    }

    void filtersHideAndShow()
    {
        const int withFilters = m_header->sizeHint().height();
        m_header->setFilterVisibility(false);
        QCOMPARE(m_header->sizeHint().height(), withFilters - 25);
        QVERIFY(!m_header->filters().at(0)->isVisible());
        m_header->setAnimationDuration(30);
        m_header->setFilterVisibility(true);
        QTRY_COMPARE(m_header->getFilterHeight(), 25);
        QVERIFY(m_header->filters().at(0)->isVisible());
        QCOMPARE(m_header->filters().at(2)->geometry().left(), m_header->sectionViewportPosition(2) + 1);
    }

    void dialogPlacement_data()
    {
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<QPoint>("placed");
        const QRect screen(0, 0, 1000, 768);
        QTest::newRow("room everywhere") << screen << QPoint(100, 100) << QPoint(102, 102);
        QTest::newRow("right edge: to the left") << screen << QPoint(950, 100) << QPoint(748, 102);
        QTest::newRow("bottom edge: above") << screen << QPoint(100, 700) << QPoint(102, 578);
        QTest::newRow("small screen: its corner") << QRect(0, 0, 150, 107) << QPoint(5, 5) << QPoint(0, 0);
    }

    void dialogPlacement()
    {
        QFETCH(QRect, screen);
        QFETCH(QPoint, point);
        QFETCH(QPoint, placed);
        QCOMPARE(AQFilterDialog::placement(screen, point, QSize(200, 100)), placed);
    }

    // The single-filter header and proxy (raw texts, one column at a
    // time), then the ascending header sorting by clicks and by replay.
    void orvexHeaders()
    {
        auto* header = new Gui::Widget::OrvexFilterHeaderView("orvexHeader", m_fx->root(), true);
        Gui::Widget::OrvexSortFilterProxyModel proxy;
        proxy.setSourceModel(m_model);
        m_view->setHorizontalHeader(m_header = header);
        m_view->setModel(&proxy);
        connect(header, &AQFilterHeaderView::filterChanged, &proxy, &Gui::Widget::OrvexSortFilterProxyModel::setFilter);
        typeInto(0, "a");
        QCOMPARE(shown(), (QStringList{"abc", "a1c", ""}));
        press(useDialog(1, 3, {"2"}), "ok");
        QCOMPARE(header->getFilter(-1), (QStringList{"*", ">2", "*", "*", "*", "*"}));
        QCOMPARE(shown(), (QStringList{"1.5", "", "xbc"}));

        auto* sorting = new Gui::Widget::OrvexAscendingHeaderView("sortHeader", Qt::Horizontal, m_fx->root(), true);
        m_view->setModel(m_proxy);
        m_view->setHorizontalHeader(sorting);
        m_view->setSortingEnabled(true);
        QCOMPARE(shown(), (QStringList{"abc", "a1c", "1.5", "", "xbc"}));
        const QPoint second(sorting->sectionViewportPosition(2) + 5, sorting->height() / 2);
        QTest::mouseClick(sorting->viewport(), Qt::LeftButton, {}, second);
        QVERIFY(sorting->isAscending());
        QTest::mouseClick(sorting->viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(shown(), (QStringList{"xbc", "", "1.5", "a1c", "abc"}));
        QVERIFY(m_fx->replay({"sortHeader sortIndicatorChanged 0 0"}));
        QCOMPARE(shown(), (QStringList{"", "1.5", "a1c", "abc", "xbc"}));
    }
};

QTEST_MAIN(tst_FilterHeader)
#include "tst_filterheader.moc"
