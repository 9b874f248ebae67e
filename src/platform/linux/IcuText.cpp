#include "platform/linux/IcuText.h"

#include <unicode/localpointer.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace kestrovan {

namespace {

struct CodePoint {
    UChar32 value; ///< negative if malformed; then one byte
    std::size_t length;
};

CodePoint codePointAt(std::string_view text, std::size_t position)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto next = static_cast<std::int64_t>(position);
    const auto length = static_cast<std::int64_t>(text.size());
    UChar32 value = 0;
    U8_NEXT(bytes, next, length, value);
    return {value, value < 0 ? 1 : static_cast<std::size_t>(next) - position};
}

std::size_t wellFormedLength(std::string_view text)
{
    std::size_t length = 0;
    while (length < text.size()) {
        const auto point = codePointAt(text, length);
        if (point.value < 0)
            break;
        length += point.length;
    }
    return length;
}

bool isWhiteSpace(UChar32 value)
{
    return value >= 0 && u_hasBinaryProperty(value, UCHAR_WHITE_SPACE);
}

// Walks a text by characters. Malformed bytes part the text into stretches that ICU sees one by one, for ICU would
// join such a byte with what follows it.
class CharacterWalk {
public:
    explicit CharacterWalk(std::string_view text) : text_(text) {}

    bool atEnd() const { return end_ == text_.size(); }
    std::size_t begin() const { return begin_; }
    std::size_t end() const { return end_; }

    /// Moves on by one character; not at the end.
    void advance()
    {
        begin_ = end_;
        if (end_ == stretchEnd_)
            beginStretch();
        if (end_ == stretchEnd_)
            stretchEnd_ = ++end_; // a malformed byte
        else
            end_ = nextBoundary();
    }

private:
    void beginStretch()
    {
        stretchBegin_ = end_;
        stretchEnd_ = end_ + wellFormedLength(text_.substr(end_));
        if (stretchBegin_ == stretchEnd_)
            return;
        UErrorCode error = U_ZERO_ERROR;
        if (iterator_.isNull())
            iterator_.adoptInstead(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &error));
        const auto length = static_cast<std::int64_t>(stretchEnd_ - stretchBegin_);
        stretch_.adoptInstead(utext_openUTF8(stretch_.orphan(), text_.data() + stretchBegin_, length, &error));
        ubrk_setUText(iterator_.getAlias(), stretch_.getAlias(), &error);
        iterates_ = U_SUCCESS(error) && iterator_.isValid();
    }

    std::size_t nextBoundary()
    {
        const auto boundary = iterates_ ? ubrk_next(iterator_.getAlias()) : UBRK_DONE;
        return boundary == UBRK_DONE ? end_ + codePointAt(text_, end_).length
                                     : stretchBegin_ + static_cast<std::size_t>(boundary);
    }

    std::string_view text_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::size_t stretchBegin_ = 0;
    std::size_t stretchEnd_ = 0;
    bool iterates_ = false;
    icu::LocalUTextPointer stretch_;
    icu::LocalUBreakIteratorPointer iterator_; // after what it reads, so that it goes first
};

} // namespace

std::size_t IcuText::countCharacters(std::string_view text) const
{
    std::size_t count = 0;
    for (CharacterWalk walk(text); !walk.atEnd(); walk.advance())
        ++count;
    return count;
}

std::string IcuText::prefix(std::string_view text, std::size_t characters) const
{
    CharacterWalk walk(text);
    while (characters-- > 0 && !walk.atEnd())
        walk.advance();
    return std::string(text.substr(0, walk.end()));
}

std::string IcuText::withoutLastCharacter(std::string_view text) const
{
    CharacterWalk walk(text);
    while (!walk.atEnd())
        walk.advance();
    return std::string(text.substr(0, walk.begin()));
}

std::string IcuText::trimmed(std::string_view text) const
{
    std::size_t begin = 0;
    while (begin < text.size() && isWhiteSpace(codePointAt(text, begin).value))
        begin += codePointAt(text, begin).length;
    // From the front as well: going backwards through malformed bytes has its traps.
    std::size_t end = begin;
    for (std::size_t position = begin; position < text.size();) {
        const auto point = codePointAt(text, position);
        position += point.length;
        if (!isWhiteSpace(point.value))
            end = position;
    }
    return std::string(text.substr(begin, end - begin));
}

std::string IcuText::leadingNumeric(std::string_view text) const
{
    if (text.empty())
        return {};
    const auto first = codePointAt(text, 0).value;
    if (first < 0 || u_getIntPropertyValue(first, UCHAR_NUMERIC_TYPE) == U_NT_NONE)
        return {};
    return prefix(text, 1);
}

} // namespace kestrovan
