#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QComboBox>
#include <QPointer>

namespace QtUIBase {

/**
 * A scriptable QComboBox that records a chosen text once.
 *
 * Records "CurrentIndexChanged" (while setRecordIndexChanged is on, the
 * default), "activated" and, for an editable box, "EditingFinished", each
 * with the item's or the edited text. A record is written only when its text
 * differs from the last recorded one, unless setSendAllEvents(true): picking
 * the item that is already chosen records nothing and emits nothing. The A
 * signals follow with recording suppressed; ACurrentIndexChanged is emitted
 * for every index change, recorded or not.
 *
 * Replay finds items by text, case-sensitively, or ignoring case when the
 * engine's case-insensitive find is on; a text that is not an item leaves
 * the selection alone.
 *
 * The statics set by setComBox() let a host resolve "activated" replays of
 * "NetName" boxes against another combo box; every scriptable box built
 * afterwards resets them to itself and the type " ".
 */
class ORVEXQTUIBASE_EXPORT AQComboBox : public QComboBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQComboBox(const QString& name, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQComboBox(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;

    /// Hides QComboBox::setEditable (not virtual): an editable box also
    /// records its finished edits.
    void setEditable(bool editable);
    /// Selects @p text as the program's choice: confirming the same text
    /// later is not recorded.
    void setCurrentTextInternal(const QString& text);
    void setRecordIndexChanged(bool record) { m_recordIndexChanged = record; }
    void setSendAllEvents(bool send) { m_sendAllEvents = send; }

    static void setComBox(QComboBox* combo, QString typeName);
    static QComboBox* comBox() { return m_combobox.data(); }
    static QString typeName() { return m_typeName; }

Q_SIGNALS:
    void ACurrentIndexChanged(int index);
    void ACurrentIndexChanged(const QString& text);
    void AIndexActivated(int index);
    void AIndexActivated(const QString& text);
    void AEditTextChanged(const QString& text);
    void AEditingFinished();

private Q_SLOTS:
    void handleCurrentIndexChangedSignal(int index);
    void onActivated(int index);
    void handleEditTextChangedSignal(const QString& text);
    void handleEditingFinishedSignal();

private:
    void init(const QString& name);
    /// Hands the record to the engine unless it repeats the last text.
    void recordSignal(const QString& signal, const QString& text);
    bool isRepeat(const QString& text) const { return !m_sendAllEvents && text == m_lastRecordedText; }
    bool isNetNameReplay() const;

    bool m_scriptable = false;
    QString m_lastRecordedText;
    bool m_sendAllEvents = false;
    bool m_recordIndexChanged = true;

    // Guarded: the box a host names here may go away before the next replay.
    static QPointer<QComboBox> m_combobox;
    static QString m_typeName;
};

} // namespace QtUIBase
