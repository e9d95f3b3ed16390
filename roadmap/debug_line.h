// Lines of the debug log, and the numbers in them, written thousands of times a second.
#pragma once

#include <QString>
#include <QtGlobal>

#include <charconv>

// One line of the debug log, handed to the message handler as it is: what
// qDebug() would hand it, without the formatting stream, which costs more than
// the collision test a line reports.
inline void debugLine(const QString& line)
{
    qt_message_output(QtDebugMsg, QMessageLogContext(), line);
}

// Builds a short text of words and whole numbers in a buffer of its own:
// plain digits, as the debug stream and QString::number write them, without
// their locale machinery.
class TextWithNumbers {
public:
    TextWithNumbers& operator<<(const char* text)
    {
        while (*text && end_ < Capacity)
            buffer_[end_++] = *text++;
        return *this;
    }
    TextWithNumbers& operator<<(long long number)
    {
        end_ = int(std::to_chars(buffer_ + end_, buffer_ + Capacity, number).ptr - buffer_);
        return *this;
    }
    QString text() const { return QString::fromLatin1(buffer_, end_); }

private:
    static constexpr int Capacity = 160;
    char buffer_[Capacity];
    int end_ = 0;
};
