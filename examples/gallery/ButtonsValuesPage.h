#pragma once

#include <QWidget>

class QLabel;
class QListWidget;

namespace QtUIBase {
class AQColorButton;
class AQComboBox;
class AQDoubleSpinBox;
class AQScriptableLineEdit;
class AQSlider;
class AQSpinBox;
class AQTextEdit;
} // namespace QtUIBase

/**
 * The "Buttons and values" page: one of each scriptable button and value
 * input, set up as a small simulation set-up form. Every reaction is wired
 * to the widgets' A signals and logged in the activity list, so a replayed
 * session shows the same activity as the recorded one.
 *
 * The page registers as "ButtonsValues"; its widgets are recorded under it.
 */
class ButtonsValuesPage : public QWidget
{
    Q_OBJECT

public:
    explicit ButtonsValuesPage(QWidget* parent = nullptr);

private:
    QWidget* buildButtons();
    QWidget* buildValues();
    QWidget* buildActivity();
    /// Adds a line to the activity list; with @p replacesSameKind a line of
    /// the same kind (text before the colon) just before it is replaced.
    void log(const QString& text, bool replacesSameKind = false);
    void pickColour();
    void askName();

    QListWidget* m_activity = nullptr;
    QLabel* m_clickCount = nullptr;
    QLabel* m_sliderValue = nullptr;
    QLabel* m_projectName = nullptr;
    QtUIBase::AQColorButton* m_colour = nullptr;
    int m_clicks = 0;
};
