#include "WrapperFixture.h"

#include <Script/AQScripts.h>
#include <Widget/Filter/AQFilterComboBox.h>
#include <Widget/Filter/AQFilterDialog.h>
#include <Widget/Filter/AQFilterHeaderView.h>
#include <Widget/Filter/AQFilterLineEdit.h>
#include <Widget/Filter/AQSortMultiFilterProxyModel.h>
#include <Widget/Filter/FilterKind.h>
#include <Widget/Filter/NoCommaValidator.h>
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

// Column i holds kind i: names, reals, ints, points, pass and on flags.
class KindModel : public QStandardItemModel
{
public:
    explicit KindModel(QObject* parent)
        : QStandardItemModel(5, 6, parent)
    {
        setKinds({Text, Real, Integer, Region, PassFail, OnOff});
        const QVariantList rows[] = {{"abc", 1.0, 1, QPointF(0, 0), true, true},
                                     {"a1c", 2.0, 2, QPointF(10, 5), false, true},
                                     {"1.5", 2.5, 3, QPointF(11, 5), true, false},
                                     {"", 3.0, 4, QPointF(5, 6), false, false},
                                     {"xbc", 4.0, 5, QPointF(1, 1), true, true}};
        for (int r = 0; r < 5; ++r) {
            for (int c = 0; c < 6; ++c)
                setData(index(r, c), rows[r].at(c));
        }
    }
    // The header reads kinds in the display role, the proxy in its own role.
    void setKinds(const QList<int>& kinds)
    {
        for (int c = 0; c < kinds.size(); ++c) {
            setHeaderData(c, Qt::Horizontal, kinds.at(c), Qt::DisplayRole);
            setHeaderData(c, Qt::Horizontal, kinds.at(c), FilterKindRole);
        }
    }
    void resetKinds(const QList<int>& kinds)
    {
        beginResetModel();
        setKinds(kinds);
        endResetModel();
    }
};

QStringList stars()
{
    return {"*", "*", "*", "*", "*", "*"};
}

} // namespace

/// The filter header on a real table over the multi-filter proxy.
class tst_FilterHeader : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    KindModel* m_model = nullptr;
    AQSortMultiFilterProxyModel* m_proxy = nullptr;
    QTableView* m_view = nullptr;
    AQFilterHeaderView* m_header = nullptr;

    AQFilterLineEdit* edit(int column) const { return m_header->filters().at(column)->filterLineEdit(); }

    // Column 0 of the rows the view shows.
    QStringList shown() const
    {
        QStringList names;
        for (int r = 0; r < m_view->model()->rowCount(); ++r)
            names << m_view->model()->index(r, 0).data().toString();
        return names;
    }

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
        if (!dialog)
            return nullptr;
        if (auto* condition = dialog->findChild<QComboBox*>("filter_dialog_condition")) {
            for (int i = 0; i < downs; ++i)
                QTest::keyClick(condition, Qt::Key_Down);
        }
        const auto fields = dialog->findChildren<QLineEdit*>();
        for (int i = 0; i < values.size() && i < fields.size(); ++i)
            QTest::keyClicks(fields.at(i), values.at(i));
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
        m_model = new KindModel(m_fx->root());
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

    void typedTextBecomesPattern_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("? and *") << "a?c*" << "^$|^a.{1,1}c.*$" << QStringList{"abc", "a1c", ""};
        QTest::newRow("the point matches any character") << "1.5" << "^$|^1.5$" << QStringList{"1.5", ""};
        QTest::newRow("other characters keep their meaning") << "[ax]bc" << "^$|^[ax]bc$"
                                                             << QStringList{"abc", "", "xbc"};
        QTest::newRow("unfinished expression: only empty cells") << "(a" << "^$|^(a$" << QStringList{""};
    }

    void typedTextBecomesPattern()
    {
        QFETCH(QString, typed);
        QFETCH(QString, pattern);
        QFETCH(QStringList, rows);
        QCOMPARE(m_header->getFilter(-1), stars());
        QSignalSpy announced(m_header, &AQFilterHeaderView::filterChanged);
        typeInto(0, typed);
        QCOMPARE(announced.last(), (QVariantList{0, pattern}));
        QCOMPARE(shown(), rows);
    }

    void filterOperations_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<int>("column");
        QTest::addColumn<QStringList>("answer");
        QTest::addColumn<QStringList>("texts");
        const QStringList all = stars();
        QTest::newRow("getFilter -1") << "get" << -1 << all << all;
        QTest::newRow("getFilter 0 answers nothing") << "get" << 0 << QStringList{} << all;
        QTest::newRow("getFilter 5") << "get" << 5 << QStringList{"*"} << all;
        QTest::newRow("getFilter 6") << "get" << 6 << QStringList{} << all;
        QTest::newRow("resetFilter 0 ignored") << "reset" << 0 << QStringList{} << all;
        QTest::newRow("resetFilter 2") << "reset" << 2 << QStringList{} << QStringList{"*", "*", "", "*", "*", "*"};
        QTest::newRow("resetFilter -1") << "reset" << -1 << QStringList{} << QStringList{"", "", "", "", "", ""};
        QTest::newRow("setFilterList 1") << "list" << 1 << QStringList{"*", "a", "b"} << all;
        QTest::newRow("setFilterList 6") << "list" << 6 << QStringList{} << all;
        QTest::newRow("resetFilterHistory 1") << "history" << 1 << QStringList{} << QStringList{"*", "", "*", "*", "*", "*"};
    }

    void filterOperations()
    {
        QFETCH(QString, operation);
        QFETCH(int, column);
        QFETCH(QStringList, answer);
        QFETCH(QStringList, texts);
        QStringList got;
        if (operation == "get") {
            got = m_header->getFilter(column);
        } else if (operation == "reset") {
            m_header->resetFilter(column);
        } else {
            m_header->setFilterList(1, {"b", "a"});
            if (operation == "history")
                m_header->resetFilterHistory(column);
            else if (m_header->setFilterList(column, {"b", "a"}))
                for (int i = 0; i < m_header->filters().at(column)->count(); ++i)
                    got << m_header->filters().at(column)->itemText(i);
            if (operation == "history")
                QCOMPARE(m_header->filters().at(1)->count(), 0);
        }
        QCOMPARE(got, answer);
        QCOMPARE(m_header->getFilter(-1), texts);
    }

    void dialogSetsFilter_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("downs");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        const QStringList all{"abc", "a1c", "1.5", "", "xbc"};
        QTest::newRow("real in range") << 1 << 4 << QStringList{"1.5", "3"} << "ok" << "Numeric Filter:" << ">1.5,<3"
                                       << QStringList{"a1c", "1.5"};
        QTest::newRow("range with one value") << 1 << 4 << QStringList{"1.5"} << "ok" << "Numeric Filter:" << "" << all;
        QTest::newRow("comma refused") << 1 << 1 << QStringList{"2,5"} << "ok" << "Numeric Filter:" << "=25"
                                       << QStringList{};
        QTest::newRow("integer less than") << 2 << 2 << QStringList{"3"} << "ok" << "Numeric Filter:" << "<3"
                                           << QStringList{"abc", "a1c"};
        QTest::newRow("region") << 3 << 0 << QStringList{"0", "0", "10", "5"} << "ok" << "Region Filter:"
                                << "(0,0):(10,5)" << QStringList{"abc", "a1c", "xbc"};
        QTest::newRow("pass untouched") << 4 << 0 << QStringList{} << "ok" << "Pass/Fail Filter:" << "PASS"
                                        << QStringList{"abc", "1.5", "xbc"};
        QTest::newRow("fail") << 4 << 1 << QStringList{} << "ok" << "Pass/Fail Filter:" << "FAIL"
                              << QStringList{"a1c", ""};
        QTest::newRow("on untouched") << 5 << 0 << QStringList{} << "ok" << "On/Off Filter:" << "ON"
                                      << QStringList{"abc", "a1c", "xbc"};
        QTest::newRow("cancel") << 5 << 1 << QStringList{} << "cancel" << "On/Off Filter:" << "*" << all;
    }

    void dialogSetsFilter()
    {
        QFETCH(int, column);
        QFETCH(int, downs);
        QFETCH(QStringList, values);
        QFETCH(QString, button);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        QVERIFY(edit(column)->isReadOnly());
        AQFilterDialog* dialog = useDialog(column, downs, values);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), title);
        QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
        if (auto* second = dialog->findChild<QLineEdit*>("filter_dialog_value2")) {
            QCOMPARE(second->isVisible(), downs == 4);
            QCOMPARE(dialog->findChild<QLineEdit*>("filter_dialog_value1")->isEnabled(), downs != 0);
        }
        m_fx->startRecording();
        press(dialog, button);
        const QString argument = text.isEmpty() ? "" : " " + (text.at(0).isLetter() ? text : '"' + text + '"');
        const QString recorded = QString("QtSignal filterHeader_filter_%1 filterHeader_filter_%1_text filterChanged%2")
                                     .arg(column)
                                     .arg(argument);
        QCOMPARE(m_fx->stopRecording(), button == "ok" ? QStringList{recorded} : QStringList{});
        QCOMPARE(edit(column)->text(), text);
        QCOMPARE(shown(), rows);
        QCOMPARE(m_header->filters().at(column)->findText(text) >= 0, button == "ok" && !text.isEmpty());
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
        m_header->filters().at(0)->clearEditText();
        m_proxy->resetFilter(-1);
        QCOMPARE(m_proxy->rowCount(), 5);
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
        m_model->resetKinds({kind, Real, Integer, Region, PassFail, OnOff});
        QCOMPARE(m_header->filters().at(0)->isEnabled(), enabled);
        QCOMPARE(edit(0)->isReadOnly(), readOnly);
        QCOMPARE(edit(0)->kind(), kind);
    }

    void filtersHideAndShow()
    {
        const int withFilters = m_header->sizeHint().height();
        m_header->setFilterVisibility(false);
        QCOMPARE(m_header->sizeHint().height(), withFilters - 25);
        QVERIFY(!m_header->getFilterVisibility());
        QVERIFY(!m_header->filters().at(0)->isVisible());
        m_header->setAnimationDuration(30);
        m_header->setFilterVisibility(true);
        QTRY_COMPARE(m_header->getFilterHeight(), 25);
        QVERIFY(m_header->filters().at(0)->isVisible());
        QCOMPARE(m_header->filters().at(2)->geometry().left(), m_header->sectionViewportPosition(2) + 1);
    }

    void dialogPlacement_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<QPoint>("placed");
        QTest::newRow("room everywhere") << QPoint(100, 100) << QPoint(102, 102);
        QTest::newRow("right edge: to the left") << QPoint(950, 100) << QPoint(748, 102);
        QTest::newRow("bottom edge: above") << QPoint(100, 700) << QPoint(102, 578);
        QTest::newRow("corner of a small screen") << QPoint(5, 5) << QPoint(0, 0);
    }

    void dialogPlacement()
    {
        QFETCH(QPoint, point);
        QFETCH(QPoint, placed);
        const QRect screen = point == QPoint(5, 5) ? QRect(0, 0, 150, 107) : QRect(0, 0, 1000, 768);
        QCOMPARE(AQFilterDialog::placement(screen, point, QSize(200, 100)), placed);
    }

    void noCommaValidator_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("fixed");
        QTest::newRow("comma") << "1,5" << int(QValidator::Invalid) << "15";
        QTest::newRow("point") << "1.5" << int(QValidator::Acceptable) << "1.5";
        QTest::newRow("too many decimals") << "1.2345" << int(QValidator::Invalid) << "1.2345";
    }

    void noCommaValidator()
    {
        QFETCH(QString, input);
        QFETCH(int, state);
        QFETCH(QString, fixed);
        NoCommaValidator validator(-100, 100, 3);
        validator.setLocale(QLocale::c());
        int pos = 0;
        QString text = input;
        QCOMPARE(int(validator.validate(text, pos)), state);
        validator.fixup(text);
        QCOMPARE(text, fixed);
    }

    // The single-filter header and proxy: raw texts, one column at a time.
    void orvexHeaderFiltersOneColumn()
    {
        auto* header = new Gui::Widget::OrvexFilterHeaderView("orvexHeader", m_fx->root(), true);
        Gui::Widget::OrvexSortFilterProxyModel proxy;
        proxy.setSourceModel(m_model);
        m_view->setHorizontalHeader(header);
        m_view->setModel(&proxy);
        m_header = header;
        connect(header, &AQFilterHeaderView::filterChanged, &proxy, &Gui::Widget::OrvexSortFilterProxyModel::setFilter);
        typeInto(0, "a");
        QCOMPARE(shown(), (QStringList{"abc", "a1c", ""}));
        press(useDialog(1, 3, {"2"}), "ok");
        QCOMPARE(header->getFilter(-1), (QStringList{"*", ">2", "*", "*", "*", "*"}));
        QCOMPARE(shown(), (QStringList{"1.5", "", "xbc"}));
        m_view->setModel(m_proxy);
    }

    void ascendingHeaderToggles()
    {
        auto* header = new Gui::Widget::OrvexAscendingHeaderView("sortHeader", Qt::Horizontal, m_fx->root(), true);
        m_view->setHorizontalHeader(header);
        m_view->setSortingEnabled(true);
        QCOMPARE(shown(), (QStringList{"abc", "a1c", "1.5", "", "xbc"}));
        const QPoint second(header->sectionViewportPosition(2) + 5, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, second);
        QVERIFY(header->isAscending());
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(shown(), (QStringList{"xbc", "", "1.5", "a1c", "abc"}));
        QVERIFY(m_fx->replay({"sortHeader sortIndicatorChanged 0 0"}));
        QCOMPARE(shown(), (QStringList{"", "1.5", "a1c", "abc", "xbc"}));
    }
};

QTEST_MAIN(tst_FilterHeader)
#include "tst_filterheader.moc"
