// The bytes of a GIF whose header fields a test can set freely.
#ifndef ZELVREG_TESTS_DESKTOP_GIF_FILE_H
#define ZELVREG_TESTS_DESKTOP_GIF_FILE_H

#include <string>

namespace zelvreg::fixture {

struct GifFrame {
  int left = 0;
  int top = 0;
  int width = 1;
  int height = 1;
  int color = 1;
  int delay = 0;     // hundredths of a second
  int disposal = 0;  // 2 clears its place afterwards
};

class GifFile {
 public:
  // Places in the table of colors.
  static constexpr int red = 1;
  static constexpr int blue = 2;

  GifFile(int width, int height) {
    text = "GIF89a" + number(width) + number(height);
    constexpr char fourColors = '\x91';
    text.append({fourColors, 0, 0});
    text.append({0, 0, 0, '\xFF', 0, 0, 0, 0, '\xFF', '\xFF', '\xFF', '\xFF'});
  }

  // A frame of one color.
  void add(const GifFrame& frame) {
    addHead(frame);
    addBlocks(packed(frame));
  }

  // Only the header of a frame.
  void addHead(const GifFrame& frame) {
    text.append({'\x21', '\xF9', 4, static_cast<char>(frame.disposal << 2)});
    text += number(frame.delay);
    text.append({0, 0, ','});
    text += number(frame.left) + number(frame.top) + number(frame.width) + number(frame.height);
    text += '\0';
  }

  [[nodiscard]] std::string bytes() const { return text + ";"; }

 private:
  static std::string number(int value) {
    return {static_cast<char>(value), static_cast<char>(value >> 8)};
  }

  // Codes of three bits. They stay that short because the table is cleared after each pixel.
  static std::string packed(const GifFrame& frame) {
    constexpr unsigned clear = 4;
    constexpr unsigned end = 5;
    std::string result;
    unsigned bits = 0;
    int count = 0;
    const auto put = [&](unsigned code) {
      bits |= code << count;
      for (count += 3; count >= 8; count -= 8, bits >>= 8) {
        result += static_cast<char>(bits);
      }
    };
    for (int pixel = 0; pixel < frame.width * frame.height; ++pixel) {
      put(clear);
      put(static_cast<unsigned>(frame.color));
    }
    put(end);
    return result + static_cast<char>(bits);
  }

  void addBlocks(const std::string& packedPixels) {
    text += '\2';  // bits of a color
    for (std::size_t start = 0; start < packedPixels.size(); start += 255) {
      const std::string block = packedPixels.substr(start, 255);
      text += static_cast<char>(block.size());
      text += block;
    }
    text += '\0';
  }

  std::string text;
};

}  // namespace zelvreg::fixture

#endif
