#include "simulator/web/http.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace ostrel {
namespace {

std::string trimmed(const std::string& text) {
    const size_t begin = text.find_first_not_of(" \t");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

bool readRequestLine(const std::string& line, HttpRequest& request) {
    std::istringstream words(line);
    std::string version;
    std::string more;
    return words >> request.method >> request.target >> version && !(words >> more) && request.target[0] == '/' &&
           (version == "HTTP/1.1" || version == "HTTP/1.0");
}

bool readHeader(const std::string& line, HttpRequest& request) {
    const size_t colon = line.find(':');
    if (colon == std::string::npos || colon == 0 || line.find_first_of(" \t") < colon)
        return false;
    // Twice the same header: the one that was checked might not be the one that a browser meant.
    return request.headers.emplace(lowerCase(line.substr(0, colon)), trimmed(line.substr(colon + 1))).second;
}

bool readLines(const std::string& head, HttpRequest& request) {
    size_t begin = 0;
    for (size_t end = 0; (end = head.find("\r\n", begin)) != std::string::npos; begin = end + 2) {
        const std::string line = head.substr(begin, end - begin);
        if (line.find('\0') != std::string::npos || line.find('\n') != std::string::npos)
            return false;
        if (!(begin == 0 ? readRequestLine(line, request) : readHeader(line, request)))
            return false;
    }
    const std::string length = request.header("content-length");
    return (length.empty() || length == "0") && request.headers.count("transfer-encoding") == 0;
}

// Older browsers do not count a WebSocket as 'self'. The policy's grammar has no place for an IPv6 address.
std::string webSocketSource(const std::string& host) {
    constexpr const char* NAMEABLE = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-:";
    return host.empty() || host.find_first_not_of(NAMEABLE) != std::string::npos ? "" : " ws://" + host;
}

} // namespace

std::string lowerCase(std::string text) {
    std::transform(
        text.begin(), text.end(), text.begin(), [](unsigned char c) { return static_cast<char>(tolower(c)); });
    return text;
}

std::string HttpRequest::header(const char* name) const {
    const auto found = headers.find(name);
    return found == headers.end() ? "" : found->second;
}

bool HttpRequest::hasWord(const char* name, const std::string& word) const {
    std::istringstream words(header(name));
    for (std::string candidate; std::getline(words, candidate, ',');)
        if (lowerCase(trimmed(candidate)) == word)
            return true;
    return false;
}

HttpResult readRequest(std::string& bytes, HttpRequest& request) {
    const size_t end = bytes.find("\r\n\r\n");
    if (end == std::string::npos)
        return bytes.size() < MAX_REQUEST_BYTES ? HttpResult::Incomplete : HttpResult::Malformed;
    const std::string head = bytes.substr(0, end + 2);
    bytes.erase(0, end + 4);
    request = {};
    return head.size() <= MAX_REQUEST_BYTES && readLines(head, request) ? HttpResult::Complete : HttpResult::Malformed;
}

std::string answer(
    const std::string& status, const std::string& contentType, const std::string& body, bool withBody,
    const std::string& host) {
    return "HTTP/1.1 " + status + "\r\nContent-Type: " + contentType +
           "\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\nCache-Control: no-cache\r\nX-Content-Type-Options: nosniff\r\n"
           "Content-Security-Policy: default-src 'self'; img-src 'self' data:; connect-src 'self'" +
           webSocketSource(host) + "; frame-ancestors 'none'\r\n\r\n" + (withBody ? body : "");
}

} // namespace ostrel
