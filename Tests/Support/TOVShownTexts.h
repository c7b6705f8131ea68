// Texts from outside, and the form in which each program shows them.
#pragma once

struct sShownText
{
    const char* szText;
    const char* szShown;
    bool bUtf8 = true; // otherwise the text may have characters in a code page
};

constexpr sShownText SHOWN_TEXTS[] = {
    {"plain", "plain"},
    {"caf\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80", "caf\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80"},
    {"esc\x1b[2J\x7f", "esc\\x1b[2J\\x7f"},
    {"c1\x9b"
     "2J",
     "c1\\x9b"
     "2J",
     false},
    {"c1\xc2\x9b"
     "2J",
     "c1\\xc2\\x9b"
     "2J"}, // U+009B
    {"exe.\xe2\x80\xae"
     "txt",
     "exe.\\xe2\\x80\\xae"
     "txt"}, // U+202E
    {"\xe2\x81\xa6"
     "a\xe2\x81\xa9",
     "\\xe2\\x81\\xa6"
     "a\\xe2\\x81\\xa9"},
    {"\xe2\x80\x8e\xe2\x80\x8f\xd8\x9c", "\\xe2\\x80\\x8e\\xe2\\x80\\x8f\\xd8\\x9c"},
    {"\xe2\x80\x8b\xef\xbb\xbf", "\\xe2\\x80\\x8b\\xef\\xbb\\xbf"},
    {"\xe2\x80\xa8\xe2\x80\xa9", "\\xe2\\x80\\xa8\\xe2\\x80\\xa9"},
    {"joiner\xe2\x80\x8d", "joiner\xe2\x80\x8d"},
    {"latin \xe9", "latin \\xe9", false},
    {"cut \xe2\x82", "cut \\xe2\\x82", false},
    {"long \xc0\xaf \xe0\x80\xaf", "long \\xc0\\xaf \\xe0\\x80\\xaf", false},
    {"half \xed\xa0\x80", "half \\xed\\xa0\\x80", false},
    {"beyond \xf4\x90\x80\x80 \xff", "beyond \\xf4\\x90\\x80\\x80 \\xff", false},
};
