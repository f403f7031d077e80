#pragma once

#include "OrvexQtUIBase_export.h"

#include <string>
#include <vector>

/**
 * The host application's side of Python recording. The host derives from
 * it, decides whether recording is on (`canRecord`) and takes the recorded
 * statements (`addRecordScript`). It also keeps the flag telling whether the
 * line "import pelo3dqtui" has already been handed over: while `imported()`
 * is false the library sends that line ahead of every batch, so the host
 * sets the flag (`setImported`) once it has taken the line. Starts false.
 */
class ORVEXQTUIBASE_EXPORT OrvexQtUIBaseInterface
{
public:
    OrvexQtUIBaseInterface() = default;
    OrvexQtUIBaseInterface(const OrvexQtUIBaseInterface&) = delete;
    OrvexQtUIBaseInterface& operator=(const OrvexQtUIBaseInterface&) = delete;

    /// Whether Python recording is on now.
    virtual bool canRecord() = 0;
    /// Takes @p statements, in order.
    virtual void addRecordScript(const std::vector<std::string>& statements) = 0;

    virtual ~OrvexQtUIBaseInterface();

    bool imported() const { return m_imported; }

protected:
    void setImported(bool imported) { m_imported = imported; }

private:
    bool m_imported = false;
};
