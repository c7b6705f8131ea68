// Declares IFileFormat, a kind of file that is broken and then read, and CModelBytes, with which a model reads it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The contents of a file as text, one line for each value; nothing for a file that is refused.
typedef std::optional<std::string> tContents;

// What the library made of a file.
struct sReading
{
    tContents oContents;
    std::string sUnexpected;     // what was not as described, such as an exception of another kind
    std::size_t nPeakMemory = 0; // while the file was read
};

class IFileFormat
{
public:
    virtual ~IFileFormat() = default;

    virtual const char* GetName() const = 0;

    // A whole file with so many parts, without its check value.
    virtual std::string MakeBody(int nParts) const = 0;

    // The check value for a body. Nothing if the format has none.
    virtual std::string MakeSeal(const std::string& sBody) const = 0;

    // Whether every file with a wrong check value is refused.
    bool HasSeal() const { return !MakeSeal("").empty(); }

    // What the description of the format says about these bytes.
    virtual tContents Expect(const std::string& sBytes) const = 0;

    virtual sReading Read(const std::string& sName) const = 0;
};

// All formats.
std::vector<std::unique_ptr<IFileFormat>> MakeFormats();

// What the catalogues of a version have.
enum eCatalogContents
{
    eCatalogPlain,
    eCatalogMixed, // every second record has an older version
    eCatalogFull   // excludes, times and SHA-256
};
std::unique_ptr<IFileFormat> MakeCatalogFormat(int nVersion, eCatalogContents eContents);

std::unique_ptr<IFileFormat> MakeSectionFormat();
std::unique_ptr<IFileFormat> MakeBlindFormat();

// A number as all these files hold it.
std::string NumberBytes(std::uint32_t nNumber);

// CRC-32, as zip and PNG use it.
std::uint32_t CheckValue(const std::string& sBytes);

// Reads the bytes of a file as a model does: every read past the end throws.
class CModelBytes
{
public:
    struct sEnd
    {
    };

    explicit CModelBytes(const std::string& sBytes) : m_sBytes(sBytes) {}

    std::string Take(std::size_t nSize);
    std::int32_t Number();
    std::size_t Rest() const { return m_sBytes.size() - m_nPosition; }
    std::size_t Position() const { return m_nPosition; }

private:
    const std::string& m_sBytes;
    std::size_t m_nPosition = 0;
};
