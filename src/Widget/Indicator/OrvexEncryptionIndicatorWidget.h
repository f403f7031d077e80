#pragma once

#include "OrvexQtUIBase_export.h"

#include <QWidget>

namespace Gui::Widget {

/**
 * Shows whether the model file of a project is encrypted: a padlock, closed
 * and green for an encrypted file, open and grey for a plain one, followed
 * by the words "Encrypted" or "Not encrypted" (setTextVisible(false) keeps
 * the padlock alone, for status bars).
 *
 * The tooltip (and accessible description) names the file when one is set:
 * "Model file <name> is encrypted" or "Model file <name> is not encrypted";
 * without a file, "The model file is encrypted" or "The model file is not
 * encrypted". Defaults: not encrypted, no file, text visible. Display only:
 * nothing is recorded.
 */
class ORVEXQTUIBASE_EXPORT OrvexEncryptionIndicatorWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool encrypted READ isEncrypted WRITE setEncrypted NOTIFY encryptedChanged)

public:
    explicit OrvexEncryptionIndicatorWidget(QWidget* parent = nullptr);

    bool isEncrypted() const { return m_encrypted; }
    void setEncrypted(bool encrypted);
    QString fileName() const { return m_fileName; }
    /// The model file the indicator speaks of; shown by name (without its
    /// folder) in the tooltip.
    void setFileName(const QString& fileName);
    bool isTextVisible() const { return m_textVisible; }
    void setTextVisible(bool visible);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void encryptedChanged(bool encrypted);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString label() const;
    void updateToolTip();
    int lockSize() const;

    bool m_encrypted = false;
    bool m_textVisible = true;
    QString m_fileName;
};

} // namespace Gui::Widget
