#include "Scriptable/AQDisplayFile.h"

#include "Scriptable/AQFileDialog.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextStream>
#include <QVBoxLayout>

namespace QtUIBase {

using namespace Wrapper;

AQDisplayFile::AQDisplayFile(const QString& name, QWidget* parent, bool scriptable)
    : AQDialog(name, parent, Qt::Window, scriptable, WithSizeGrip)
    , m_findText(new QLineEdit(this))
    , m_view(new QPlainTextEdit(this))
    , m_status(new QLabel(this))
{
    m_findText->setPlaceholderText(tr("Find"));
    m_view->setReadOnly(true);
    m_view->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    auto* findButton = new QPushButton(tr("Find"), this);
    auto* openButton = new QPushButton(tr("Open..."), this);
    auto* printButton = new QPushButton(tr("Print..."), this);
    auto* closeButton = new QPushButton(tr("Close"), this);
    findButton->setAutoDefault(false);
    openButton->setAutoDefault(false);
    printButton->setAutoDefault(false);
    closeButton->setAutoDefault(false);
    connect(m_findText, &QLineEdit::returnPressed, this, &AQDisplayFile::findFromField);
    connect(findButton, &QPushButton::clicked, this, &AQDisplayFile::findFromField);
    connect(openButton, &QPushButton::clicked, this, &AQDisplayFile::browse);
    connect(printButton, &QPushButton::clicked, this, &AQDisplayFile::printWithDialog);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);

    auto* top = new QHBoxLayout;
    top->addWidget(m_findText, 1);
    top->addWidget(findButton);
    top->addStretch();
    top->addWidget(openButton);
    top->addWidget(printButton);
    top->addWidget(closeButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_status);
    resize(640, 480);
}

bool AQDisplayFile::openFile(const QString& file)
{
    QFile in(file);
    // Only plain files: a device or a pipe named by a script line would
    // never end.
    if (!QFileInfo(file).isFile() || !in.open(QIODevice::ReadOnly | QIODevice::Text)) {
        showError(this, tr("Unable to read file \"%1\"").arg(file));
        return false;
    }
    m_fileName = QFileInfo(file).absoluteFilePath();
    QTextStream stream(&in);
    m_view->setPlainText(stream.readAll());
    setWindowTitle(QFileInfo(file).fileName());
    m_status->setText(m_fileName);
    recordThenEmit(this, QStringLiteral("open"), {toScriptRelative(m_fileName)},
                   [this] { Q_EMIT AFileOpened(m_fileName); });
    return true;
}

bool AQDisplayFile::find(const QString& text, QTextDocument::FindFlags flags)
{
    AQScripts::recordSignal(this, QStringLiteral("find"), {text, decimal(int(flags))});
    bool found = !text.isEmpty() && m_view->find(text, flags);
    if (!found && !text.isEmpty()) {
        // Once around: from the other end of the file.
        QTextCursor cursor = m_view->textCursor();
        const QTextCursor before = cursor;
        cursor.movePosition(flags & QTextDocument::FindBackward ? QTextCursor::End : QTextCursor::Start);
        m_view->setTextCursor(cursor);
        found = m_view->find(text, flags);
        if (!found)
            m_view->setTextCursor(before);
    }
    m_status->setText(found ? QString() : tr("Not found: %1").arg(text));
    withRecordingSuppressed([&] { Q_EMIT AFound(found); });
    return found;
}

void AQDisplayFile::findFromField()
{
    find(m_findText->text());
}

QString AQDisplayFile::text() const
{
    return m_view->toPlainText();
}

QString AQDisplayFile::selectedText() const
{
    return m_view->textCursor().selectedText();
}

void AQDisplayFile::browse()
{
    // The file opened is the record; the dialog's answer is not needed.
    const QString file = AQFileDialog::getOpenFileName(this, tr("Open file"), QFileInfo(m_fileName).absolutePath(),
                                                       QString(), nullptr, {}, false);
    if (!file.isEmpty())
        openFile(file);
}

void AQDisplayFile::print(QPrinter* printer) const
{
    m_view->document()->print(printer);
}

bool AQDisplayFile::printToPdf(const QString& pdfFile) const
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdfFile);
    printer.setDocName(QFileInfo(m_fileName).fileName());
    print(&printer);
    return QFileInfo(pdfFile).size() > 0;
}

void AQDisplayFile::printWithDialog()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        print(&printer);
}

void AQDisplayFile::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("open") && args.size() == 1)
        openFile(fromScriptRelative(args.first()));
    else if (signal == QLatin1String("find") && !args.isEmpty())
        find(args.first(), QTextDocument::FindFlags(toInt(args.value(1))));
    else
        AQDialog::scriptReplay(signal, args);
}

} // namespace QtUIBase
