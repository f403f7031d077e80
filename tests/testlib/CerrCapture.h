#pragma once

#include <QByteArray>

#include <iostream>
#include <sstream>

/// Collects what is written to std::cerr while alive.
class CerrCapture
{
public:
    CerrCapture() : m_old(std::cerr.rdbuf(m_buffer.rdbuf())) {}
    ~CerrCapture() { std::cerr.rdbuf(m_old); }
    CerrCapture(const CerrCapture&) = delete;
    CerrCapture& operator=(const CerrCapture&) = delete;

    QByteArray text() const { return QByteArray::fromStdString(m_buffer.str()); }

private:
    std::ostringstream m_buffer;
    std::streambuf* m_old;
};
