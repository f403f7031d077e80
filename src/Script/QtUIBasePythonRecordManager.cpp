#include "Script/QtUIBasePythonRecordManager.h"

#include "Script/OrvexQtUIBaseInterface.h"

namespace Gui::Python {

QtUIBasePythonRecordManager::QtUIBasePythonRecordManager() = default;

QtUIBasePythonRecordManager* QtUIBasePythonRecordManager::instance()
{
    // Function-local statics are initialised once, thread-safely.
    static QtUIBasePythonRecordManager manager;
    return &manager;
}

void QtUIBasePythonRecordManager::setInterface(OrvexQtUIBaseInterface* host)
{
    m_interface = host;
}

void QtUIBasePythonRecordManager::addContent(const std::string& statement)
{
    m_contents.push_back(statement);
}

void QtUIBasePythonRecordManager::addContent(const std::vector<std::string>& statements)
{
    m_contents.insert(m_contents.end(), statements.begin(), statements.end());
}

void QtUIBasePythonRecordManager::clear()
{
    m_contents.clear();
}

void QtUIBasePythonRecordManager::submitContent()
{
    if (!m_interface || !m_interface->canRecord() || m_contents.empty())
        return;
    if (!m_interface->imported())
        m_interface->addRecordScript({"import pelo3dqtui"});
    // Taken out first: the host may record more while it handles the batch,
    // and those statements must wait for the next submission, not vanish.
    const std::vector<std::string> batch = std::move(m_contents);
    m_contents.clear();
    m_interface->addRecordScript(batch);
    emit emitContents(batch);
}

} // namespace Gui::Python
