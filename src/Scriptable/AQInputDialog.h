#pragma once

#include "OrvexQtUIBase_export.h"

#include <QInputDialog>

namespace QtUIBase {

/**
 * QInputDialog's static questions, answered from the script during replay.
 *
 * While a replay runs no dialog is shown: the answer is the next "QtFillin"
 * line of the script. getInt() and getDouble() read it as a number (0 and
 * @p ok false for an empty fill-in), getItem() sets @p ok false for an empty
 * one, getText() returns it and leaves @p ok alone.
 *
 * Otherwise the Qt dialog runs; with @p record the answer is written as a
 * fill-in (numbers as getInt: decimal, getDouble: six significant digits),
 * or an empty fill-in when the dialog was cancelled. It is written even
 * where recording is suppressed, as in a reaction to an A signal: replaying
 * the operation that asked needs the answer.
 */
class ORVEXQTUIBASE_EXPORT AQInputDialog : public QInputDialog
{
    Q_OBJECT

public:
    using QInputDialog::QInputDialog;

    static double getDouble(QWidget* parent, const QString& title, const QString& label, double value = 0,
                            double min = -2147483647, double max = 2147483647, int decimals = 1, bool* ok = nullptr,
                            Qt::WindowFlags flags = Qt::WindowFlags(), bool record = true);
    static int getInt(QWidget* parent, const QString& title, const QString& label, int value = 0,
                      int min = -2147483647, int max = 2147483647, int step = 1, bool* ok = nullptr,
                      Qt::WindowFlags flags = Qt::WindowFlags(), bool record = true);
    static QString getItem(QWidget* parent, const QString& title, const QString& label, const QStringList& items,
                           int current = 0, bool editable = true, bool* ok = nullptr,
                           Qt::WindowFlags flags = Qt::WindowFlags(), bool record = true);
    static QString getText(QWidget* parent, const QString& title, const QString& label,
                           QLineEdit::EchoMode echo = QLineEdit::Normal, const QString& text = QString(),
                           bool* ok = nullptr, Qt::WindowFlags flags = Qt::WindowFlags(),
                           Qt::InputMethodHints inputMethodHints = Qt::ImhNone, bool record = true);
};

} // namespace QtUIBase
