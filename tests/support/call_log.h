// What the fakes of devices, commands and sleeps saw, in order, one line a call. Tests compare whole logs; `shareWith`
// merges them into the recording display's, so that drawing, requests and sleeps are compared as one sequence.
#ifndef OSTREL_TESTS_SUPPORT_CALL_LOG_H
#define OSTREL_TESTS_SUPPORT_CALL_LOG_H

#include <string>
#include <vector>

class CallLog {
  public:
    // The number-th call from now on fails, whatever it is; 0: none does.
    void failCall(int number) {
        failing = number;
        made = 0;
    }

    // Every fake asks once a call. Calls are counted from failCall on.
    bool nextCallFails() { return ++made == failing; }

    // Whether the call named by failCall was ever made.
    bool failureWasMet() const { return failing != 0 && made >= failing; }

    void add(const std::string& line) { lines().push_back(line); }

    // Lines go to `others` from now on: shareWith(&display().calls). Null: to a list of its own.
    void shareWith(std::vector<std::string>* others) { shared = others; }

    // The calls since the last take, each with a line end behind it.
    std::string take() {
        std::string log;
        for (const std::string& line : lines())
            log += line + "\n";
        lines().clear();
        return log;
    }

  private:
    std::vector<std::string>& lines() { return shared != nullptr ? *shared : own; }

    std::vector<std::string> own;
    std::vector<std::string>* shared = nullptr;
    int failing = 0;
    int made = 0;
};

// The one log of the process; `callLog() = {}` is a fresh start. Never destroyed: static objects may still call.
inline CallLog& callLog() {
    static CallLog* const log = new CallLog;
    return *log;
}

inline std::string quotedBytes(const char* text) {
    return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

#endif
