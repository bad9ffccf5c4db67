// The reading end of a touch stream, as text: "X10 Y20 down |" is a frame of a press.
#ifndef OSTREL_TESTS_SIMULATOR_STREAM_READER_H
#define OSTREL_TESTS_SIMULATOR_STREAM_READER_H

#include "simulator/descriptor.h"

#include <cstring>
#include <fcntl.h>
#include <linux/input-event-codes.h>
#include <string>
#include <unistd.h>

class StreamReader {
  public:
    explicit StreamReader(const std::string& fifo, size_t recordBytes = sizeof(long) == 4 ? 16 : 24)
        : fd(open(fifo.c_str(), O_RDONLY | O_NONBLOCK)), recordBytes(recordBytes) {}

    // Everything that is there, at most `most` records.
    std::string read(int most = 1000000) const {
        std::string text;
        unsigned char record[24];
        while (most-- > 0 && ::read(fd.get(), record, recordBytes) == static_cast<ssize_t>(recordBytes))
            text += (text.empty() ? "" : " ") + word(record + recordBytes - 8);
        return text;
    }

  private:
    static std::string word(const unsigned char* record) {
        uint16_t type = 0;
        uint16_t code = 0;
        int32_t value = 0;
        memcpy(&type, record, 2);
        memcpy(&code, record + 2, 2);
        memcpy(&value, record + 4, 4);
        if (type == EV_SYN)
            return code == SYN_REPORT ? "|" : code == SYN_DROPPED ? "dropped" : "?";
        if (type == EV_ABS)
            return (code == ABS_X ? "X" : code == ABS_Y ? "Y" : "?") + std::to_string(value);
        return type == EV_KEY && code == BTN_TOUCH ? (value != 0 ? "down" : "up") : "?";
    }

    ostrel::Descriptor fd;
    size_t recordBytes;
};

#endif
