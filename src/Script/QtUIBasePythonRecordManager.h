#pragma once

#include "OrvexQtUIBase_export.h"

#include <QObject>

#include <string>
#include <vector>

class OrvexQtUIBaseInterface;

namespace Gui::Python {

/**
 * Gathers recorded Python statements and hands them to the host.
 *
 * One instance per process (`instance()`, built on first use). Statements
 * wait in `contents()` while there is no host interface or the host refuses
 * recording; the next successful `submitContent()` carries them along. A
 * submission sends "import pelo3dqtui" first whenever the host's
 * `imported()` flag is false, then the statements, then emits
 * `emitContents` with the same statements and empties the contents.
 * The interface is not owned.
 */
class ORVEXQTUIBASE_EXPORT QtUIBasePythonRecordManager : public QObject
{
    Q_OBJECT

public:
    static QtUIBasePythonRecordManager* instance();

    void setInterface(OrvexQtUIBaseInterface* host);
    OrvexQtUIBaseInterface* recordInterface() const { return m_interface; }

    void addContent(const std::string& statement);
    void addContent(const std::vector<std::string>& statements);
    const std::vector<std::string>& contents() const { return m_contents; }
    std::vector<std::string>& contents() { return m_contents; }
    void clear();

    /// Hands the waiting statements to the host when it records; nothing
    /// happens while the contents are empty.
    void submitContent();

signals:
    void emitContents(const std::vector<std::string>& statements);

private:
    QtUIBasePythonRecordManager();

    std::vector<std::string> m_contents;
    OrvexQtUIBaseInterface* m_interface = nullptr;
};

} // namespace Gui::Python
