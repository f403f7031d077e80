#include "ASignalLog.h"
#include "SettingsSandbox.h"
#include "SliderDriving.h"
#include "WrapperFixture.h"

#include <Script/AQScriptBackend.h>
#include <Settings/AQSettings.h>
#include <Widget/Collapsible/CollapsibleSectionWidget.h>
#include <Widget/ComboBox/OrvexComboBox.h>
#include <Widget/Indicator/OrvexEncryptionIndicatorWidget.h>
#include <Widget/Splitter/OrvexHSplitter.h>
#include <Widget/Sticker/AQDefaultStickerWidget.h>
#include <Widget/TrackMark/QTrackMark.h>

#include <QAbstractItemView>
#include <QLabel>
#include <QStyleFactory>
#include <QToolButton>
#include <QtTest>

#include <memory>

using namespace QtUIBase;
using namespace Gui::Widget;

namespace {

/// The operated small widgets, each registered under the fixture's root.
struct Panel
{
    explicit Panel(QWidget* root)
    {
        section = new CollapsibleSectionWidget("section", "Section", root, true);
        section->setAnimationDuration(0);
        section->setContentWidget(new QLabel("content"));
        section->setGeometry(0, 0, 180, 80);
        combo = new OrvexComboBox("combo", root, true);
        combo->addItems({"Alpha", "Beta"});
        combo->setGeometry(200, 0, 150, 25);
        splitter = new OrvexHSplitter("splitter", root, true);
        splitter->addWidget(new QLabel("left"));
        splitter->addWidget(new QLabel("right"));
        splitter->setGeometry(0, 100, 300, 50);
        auto* view = new QWidget(root);
        view->setGeometry(0, 160, 300, 130);
        sticker = new AQDefaultStickerWidget("sticker", "Note", "Pinned text", root, true);
        sticker->setParent(view);
        sticker->show();
    }

    QString state() const
    {
        return QStringLiteral("section %1; combo %2; splitter %3,%4; sticker %5,%6 %7")
            .arg(section->isExpanded() ? "on" : "off", combo->currentText())
            .arg(splitter->sizes().value(0))
            .arg(splitter->sizes().value(1))
            .arg(sticker->offset().x())
            .arg(sticker->offset().y())
            .arg(sticker->isVisible() ? "shown" : "hidden");
    }

    void operate(const QString& operation) const
    {
        QSplitterHandle* handle = splitter->handle(1);
        if (operation == QLatin1String("click header")) {
            QTest::mouseClick(section->headerButton(), Qt::LeftButton);
        } else if (operation == QLatin1String("space on header")) {
            section->headerButton()->setFocus();
            QTest::keyClick(section->headerButton(), Qt::Key_Space);
        } else if (operation == QLatin1String("drag handle")) {
            dragWidget(handle, handle->rect().center(), {{10, 0}, {25, 3}, {40, 0}});
        } else if (operation == QLatin1String("click handle")) {
            dragWidget(handle, handle->rect().center(), {});
        } else if (operation == QLatin1String("drag sticker")) {
            dragWidget(sticker, QPoint(4, 4), {{-10, 5}, {-30, 20}});
        } else if (operation == QLatin1String("close sticker")) {
            QTest::mouseClick(sticker->closeButton(), Qt::LeftButton);
        } else if (operation == QLatin1String("down on combo")) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
    }

    CollapsibleSectionWidget* section;
    OrvexComboBox* combo;
    OrvexHSplitter* splitter;
    AQDefaultStickerWidget* sticker;
};

} // namespace

/// Collapsible section, splitters, sticker, combo box, track mark and
/// encryption indicator.
class tst_SmallWidgets : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<WrapperFixture> m_fx;

    std::unique_ptr<Panel> showPanel()
    {
        auto panel = std::make_unique<Panel>(m_fx->root());
        m_fx->showActive();
        return panel;
    }

private Q_SLOTS:
    void initTestCase() { m_settings = std::make_unique<SettingsSandbox>(); }
    void init()
    {
        m_settings->clear();
        m_fx = std::make_unique<WrapperFixture>();
    }
    void cleanup() { m_fx.reset(); }

    void recordAndReplay_data()
    {
        QTest::addColumn<QStringList>("operations");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("replaySignals");
        QTest::newRow("section folded and unfolded")
            << QStringList{"click header", "click header"} << QStringList{"section toggled off", "section toggled on"}
            << QStringList{"section:AToggled(false)", "section:AToggled(true)"};
        QTest::newRow("section folded from the keyboard") << QStringList{"space on header"}
                                                          << QStringList{"section toggled off"}
                                                          << QStringList{"section:AToggled(false)"};
        QTest::newRow("handle dragged: one record") << QStringList{"drag handle"}
                                                    << QStringList{"splitter splitterMoved 162 1"}
                                                    << QStringList{"splitter:ASplitterMoved(162,1)"};
        QTest::newRow("handle clicked: none") << QStringList{"click handle"} << QStringList() << QStringList();
        QTest::newRow("sticker dragged") << QStringList{"drag sticker"} << QStringList{"sticker moved \"-30\" 20"}
                                         << QStringList{"sticker:AMoved(-30;20)"};
        QTest::newRow("sticker closed") << QStringList{"close sticker"} << QStringList{"sticker closed"}
                                        << QStringList{"sticker:AClosed()"};
        QTest::newRow("combo box") << QStringList{"down on combo"} << QStringList{"combo CurrentIndexChanged Beta"}
                                   << QStringList{"combo:ACurrentIndexChanged(1)", "combo:ACurrentIndexChanged(Beta)"};
    }

    void recordAndReplay()
    {
        QFETCH(QStringList, operations);
        QFETCH(QStringList, records);
        QFETCH(QStringList, replaySignals);
        auto panel = showPanel();
        m_fx->startRecording();
        for (const QString& operation : qAsConst(operations))
            panel->operate(operation);
        QCOMPARE(m_fx->stopRecording(), records);
        const QString after = panel->state();

        panel.reset();
        m_fx = std::make_unique<WrapperFixture>();
        m_settings->clear();
        panel = showPanel();
        ASignalLog log;
        log.watchTree(m_fx->root());
        QVERIFY(m_fx->replay(records));
        QCOMPARE(panel->state(), after);
        QCOMPARE(log.entries(), replaySignals);
    }

    void badRecordsAreIgnored_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("section without state") << "section toggled";
        QTest::newRow("handle position only") << "splitter splitterMoved 120";
        QTest::newRow("handle position not a number") << "splitter splitterMoved x 1";
        QTest::newRow("sticker offset incomplete") << "sticker moved 5";
        QTest::newRow("sticker closed with an argument") << "sticker closed now";
        QTest::newRow("unknown operation") << "sticker shaken";
    }

    void badRecordsAreIgnored()
    {
        QFETCH(QString, line);
        auto panel = showPanel();
        const QString before = panel->state();
        QVERIFY(m_fx->replay({line}));
        QCOMPARE(panel->state(), before);
    }

    void statePersists_data()
    {
        QTest::addColumn<bool>("recording");
        QTest::newRow("user's changes come back") << false;
        QTest::newRow("neither read nor written while recording") << true;
    }

    void statePersists()
    {
        QFETCH(bool, recording);
        auto panel = showPanel();
        const QString initial = panel->state();
        if (recording)
            m_fx->startRecording();
        panel->operate("click header");
        panel->operate("drag handle");
        const QString changed = panel->state();
        const AQSettings store(QStringLiteral("Main"));
        QCOMPARE(store.contains("Gui::Widget::CollapsibleSectionWidget/section/expanded"), !recording);
        QCOMPARE(store.contains("Gui::Widget::OrvexHSplitter/splitter/state"), !recording);

        // A second panel shown now, while the first still stands.
        auto other = std::make_unique<WrapperFixture>();
        Panel second(other->root());
        other->showActive();
        QCOMPARE(second.state().section(';', 0, 2), (recording ? initial : changed).section(';', 0, 2));
        if (recording)
            m_fx->stopRecording();
    }

    void comboPopupFitsLongestItem_data()
    {
        QTest::addColumn<QString>("style");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<bool>("widerThanQts");
        const QStringList longItems{"Port 1", "Port 2: coaxial feed at the lower edge of the patch"};
        QTest::newRow("long item, box-wide popup style") << "Windows" << longItems << true;
        QTest::newRow("long item, style fits it already") << "Fusion" << longItems << false;
        QTest::newRow("short items") << "Windows" << QStringList{"A", "B"} << false;
    }

    void comboPopupFitsLongestItem()
    {
        QFETCH(QString, style);
        QFETCH(QStringList, items);
        QFETCH(bool, widerThanQts);
        std::unique_ptr<QStyle> look(QStyleFactory::create(style));
        // Qt's own popup width for the same box is the reference.
        auto popupWidth = [&](QComboBox* combo) {
            combo->setStyle(look.get());
            combo->addItems(items);
            combo->setFixedWidth(100);
            m_fx->showActive();
            combo->showPopup();
            QWidget* popup = combo->view()->window();
            [&] { QTRY_VERIFY(popup->isVisible()); }();
            const int width = popup->width();
            combo->hidePopup();
            return width;
        };
        const int qts = popupWidth(new QComboBox(m_fx->root()));
        auto* combo = new OrvexComboBox("combo", m_fx->root(), false);
        const int width = popupWidth(combo);
        int longest = 0;
        for (const QString& item : items)
            longest = qMax(longest, combo->view()->fontMetrics().horizontalAdvance(item));
        QVERIFY(width >= longest);
        QCOMPARE(width > qts, widerThanQts);
        QVERIFY(width >= qts);
        m_fx.reset(); // before the style goes
    }

    void trackMarkStandsWhereTheHandleWould_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<int>("mark");
        QTest::newRow("horizontal") << Qt::Horizontal << false << 60;
        QTest::newRow("horizontal, inverted") << Qt::Horizontal << true << 60;
        QTest::newRow("vertical") << Qt::Vertical << false << 25;
        QTest::newRow("out of range: not shown") << Qt::Horizontal << false << 120;
    }

    void trackMarkStandsWhereTheHandleWould()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(bool, inverted);
        QFETCH(int, mark);
        auto* slider = new QSlider(orientation, m_fx->root());
        slider->setRange(0, 100);
        slider->setInvertedAppearance(inverted);
        slider->resize(orientation == Qt::Horizontal ? QSize(300, 30) : QSize(30, 250));
        QTrackMark trackMark(slider);
        trackMark.setValue(mark);
        m_fx->showActive();
        QCOMPARE(trackMark.size(), slider->size());
        slider->setValue(mark);
        QCOMPARE(trackMark.markPosition(), mark <= 100 ? sliderHandle(slider).center() : QPoint());
    }

    void encryptionToolTip_data()
    {
        QTest::addColumn<bool>("encrypted");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("encrypted file") << true << "/models/patch.omdl" << "Model file patch.omdl is encrypted";
        QTest::newRow("plain file") << false << "patch.omdl" << "Model file patch.omdl is not encrypted";
        QTest::newRow("no file") << true << "" << "The model file is encrypted";
    }

    void encryptionToolTip()
    {
        QFETCH(bool, encrypted);
        QFETCH(QString, file);
        QFETCH(QString, toolTip);
        OrvexEncryptionIndicatorWidget indicator;
        QSignalSpy changed(&indicator, &OrvexEncryptionIndicatorWidget::encryptedChanged);
        indicator.setFileName(file);
        indicator.setEncrypted(encrypted);
        QCOMPARE(indicator.toolTip(), toolTip);
        QCOMPARE(changed.count(), encrypted ? 1 : 0);
    }
};

QTEST_MAIN(tst_SmallWidgets)
#include "tst_smallwidgets.moc"
