#pragma once

#include <string>
#include <string_view>

namespace vela::shell {

// Output takes the data that a run prints: rows, and what commands show. It gathers text and
// passes it on in large pieces.
//
// The first failure is kept; from then on text is thrown away, so that writers need not check
// each piece. Whoever runs statements calls Flush after each and stops when it fails.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    void Write(std::string_view text)
    {
        mBuffer += text;
        if (mBuffer.size() >= kPieceSize)
            PassOn();
    }
    void Write(char byte) { Write(std::string_view(&byte, 1)); }
    // Passes on everything written so far. False: some of it, now or earlier, could not be.
    bool Flush();
    // The errno of the first failure; 0 when there was none.
    [[nodiscard]] int Error() const { return mError; }

protected:
    // Takes text over for good. 0, or the errno of what went wrong.
    [[nodiscard]] virtual int Consume(std::string_view text) = 0;

private:
    static constexpr size_t kPieceSize = 1 << 18;

    void PassOn();

    std::string mBuffer;
    int mError = 0;
};

// Output to an open file descriptor, which stays the caller's.
class FileOutput : public Output {
public:
    explicit FileOutput(int descriptor) : mDescriptor(descriptor) {}

protected:
    [[nodiscard]] int Consume(std::string_view text) override;

private:
    int mDescriptor;
};

}   // namespace vela::shell
