#pragma once

#include "OrvexQtUIBase_export.h"

#include <QMessageBox>

namespace QtUIBase {

/**
 * A QMessageBox whose answers take part in scripts.
 *
 * The box is never replayed through its buttons: the user's answer is
 * recorded as a fill-in ("QtFillin Yes", "QtFillin OK", ...) and, during a
 * replay, read back from the next fill-in line without showing the box at
 * all (an unknown or missing answer reads as NoButton, 0). The static
 * functions take the arguments of the QMessageBox functions of the same
 * names plus a last @p record; with @p record false nothing is written, but
 * a replay still reads a fill-in. Execute() does the same for a box built
 * by the caller, recording when the constructor's @p record was set.
 *
 * With setHandleYNKeys(true) the Y key answers Yes (accepts the box when it
 * has no Yes button) and the N key answers No (rejects it likewise).
 *
 * Defaults: record true, Y/N keys not handled.
 */
class ORVEXQTUIBASE_EXPORT AQMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    AQMessageBox();
    AQMessageBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                 QMessageBox::StandardButtons buttons = QMessageBox::NoButton, QWidget* parent = nullptr,
                 Qt::WindowFlags flags = Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint, bool record = true);

    /// Shows the box (or, during replay, reads the answer) and answers the
    /// button value.
    int Execute();

    static StandardButton critical(QWidget* parent, const QString& title, const QString& text,
                                   StandardButtons buttons = Ok, StandardButton defaultButton = NoButton,
                                   bool record = true);
    static StandardButton information(QWidget* parent, const QString& title, const QString& text,
                                      StandardButtons buttons = Ok, StandardButton defaultButton = NoButton,
                                      bool record = true);
    static StandardButton question(QWidget* parent, const QString& title, const QString& text,
                                   StandardButtons buttons = StandardButtons(Yes | No),
                                   StandardButton defaultButton = NoButton, bool record = true);
    static StandardButton warning(QWidget* parent, const QString& title, const QString& text,
                                  StandardButtons buttons = Ok, StandardButton defaultButton = NoButton,
                                  bool record = true);
    /// Older form: up to three buttons, the one or-ed with
    /// QMessageBox::Default is the default button.
    static int question(QWidget* parent, const QString& title, const QString& text, int button0, int button1 = 0,
                        int button2 = 0, bool record = true);
    static int warning(QWidget* parent, const QString& title, const QString& text, int button0, int button1 = 0,
                       int button2 = 0, bool record = true);

    /// Name of @p button in fill-ins; "NoButton" for any value outside the
    /// table.
    static QString _encodeStandardButton(QMessageBox::StandardButton button);
    /// Value named @p name; NoButton for an unknown name.
    static QMessageBox::StandardButton _decodeStandardButton(const QString& name);

    void setHandleYNKeys(bool handle) { m_handleYNKeys = handle; }
    bool isHandleYNKeys() const { return m_handleYNKeys; }
    bool isRecord() const { return m_record; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    using StaticFunction = StandardButton (*)(QWidget*, const QString&, const QString&, StandardButtons,
                                              StandardButton);
    static StandardButton ask(StaticFunction function, QWidget* parent, const QString& title, const QString& text,
                              StandardButtons buttons, StandardButton defaultButton, bool record);
    static int askOldForm(StaticFunction function, QWidget* parent, const QString& title, const QString& text,
                          const int (&buttons)[3], bool record);
    static StandardButton replayedAnswer();
    static void recordAnswer(int answer);

    bool m_record = true;
    bool m_handleYNKeys = false;
};

} // namespace QtUIBase
