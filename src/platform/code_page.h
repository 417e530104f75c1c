// Text of a code page of the system's, turned into UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <utility>

class CodePage {
public:
    /// page: the number that Windows gives it, such as 437, 1250 or 28592 (ISO 8859-2).
    explicit CodePage(int page);
    ~CodePage();
    CodePage(CodePage&& other) noexcept : page_(other.page_), converter_(std::exchange(other.converter_, nullptr)) {}
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    CodePage& operator=(CodePage&&) = delete;

    /// False when this system does not have the page; there is nothing to convert with then.
    bool known() const { return converter_ != nullptr; }
    /// Appends the text in UTF-8; bytes that the page does not use become the replacement character U+FFFD.
    void addAsUtf8(std::string& out, std::string_view text) const;

private:
    int page_;
    void* converter_ = nullptr;  ///< off Windows of iconv's
};
