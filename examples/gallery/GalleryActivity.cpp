#include "GalleryActivity.h"

#include <QListWidget>
#include <QVBoxLayout>

GalleryActivity::GalleryActivity(QWidget* parent)
    : QGroupBox(tr("Activity"), parent)
    , m_lines(new QListWidget(this))
{
    m_lines->setObjectName(QStringLiteral("activityList"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_lines);
}

void GalleryActivity::add(const QString& text)
{
    m_lines->addItem(text);
    m_lines->scrollToBottom();
}
