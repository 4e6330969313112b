// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/ScannedPage.h"

#include <fstream>
#include <sstream>
#include <vector>

namespace velmora::test {

namespace {

/// Objects of a PDF file with the table of where they are.
class PdfFile {
  public:
    void add(const std::string& content) {
        places_.push_back(text_.size());
        text_ += std::to_string(places_.size()) + " 0 obj\n" + content + "\nendobj\n";
    }

    /// The whole file; the first object is the catalogue.
    std::string finished() const {
        const std::string count = std::to_string(places_.size() + 1);
        std::string table = "xref\n0 " + count + "\n0000000000 65535 f \n";
        for (const std::size_t place : places_) {
            std::string digits = std::to_string(place);
            digits.insert(0, 10 - digits.size(), '0');
            table += digits + " 00000 n \n";
        }
        return text_ + table + "trailer\n<< /Size " + count + " /Root 1 0 R >>\nstartxref\n" +
               std::to_string(text_.size()) + "\n%%EOF\n";
    }

  private:
    std::string text_ = "%PDF-1.4\n";
    std::vector<std::size_t> places_;
};

std::string stream(const std::string& dictionary, const std::string& content) {
    return "<< " + dictionary + " /Length " + std::to_string(content.size()) + " >>\nstream\n" +
           content + "\nendstream";
}

}  // namespace

std::filesystem::path writeScannedPage(const VirtualDesktop& desktop, const std::string& grayFile,
                                       int width, int height) {
    std::ostringstream pixels;
    pixels << std::ifstream(desktop.folder() / grayFile, std::ios::binary).rdbuf();
    const std::string across = std::to_string(width / 2);
    const std::string down = std::to_string(height / 2);
    PdfFile file;
    file.add("<< /Type /Catalog /Pages 2 0 R >>");
    file.add("<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    file.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + across + " " + down +
             "] /Contents 4 0 R /Resources << /XObject << /Scan 5 0 R >> >> >>");
    file.add(stream("", across + " 0 0 " + down + " 0 0 cm /Scan Do"));
    file.add(stream("/Type /XObject /Subtype /Image /Width " + std::to_string(width) + " /Height " +
                        std::to_string(height) + " /ColorSpace /DeviceGray /BitsPerComponent 8",
                    pixels.str()));
    return desktop.writeFile("sample.pdf", file.finished());
}

}  // namespace velmora::test
