// What a scanner reads from a picture.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "app/printing/page/barcode.h"

namespace test {

/// A folder of this test's own, emptied when it is made and removed with it.
class PictureFolder {
 public:
  PictureFolder();
  ~PictureFolder();
  PictureFolder(const PictureFolder&) = delete;
  PictureFolder& operator=(const PictureFolder&) = delete;

  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

/// The symbols in a picture file, each as "KIND:data" ("CODE-128:000123001", "I2/5:...", "EAN-13:...", "QR-Code:..."),
/// sorted. A picture without symbols has none.
std::vector<std::string> Decoded(const std::string& picture);

/// Paints the bars black on white at the printer's own dots, with `margin` white dots around, into a picture file.
void WritePicture(const app::printing::PlacedBarcode& placed, int margin, const std::string& file);

/// What a command writes; the test fails when it ends with anything but 0 or one of `also`.
std::string OutputOf(const std::string& command, const std::vector<int>& also = {});

}  // namespace test
