// SPDX-License-Identifier: GPL-3.0-or-later
// Scan files read and compared. What the program prints is in sessions/survey.t.
#include <algorithm>
#include <cstdio>

#include "survey/file/reader.h"
#include "survey/output/exports.h"
#include "survey/text/codes.h"
#include "survey/text/text.h"
#include "tests/support.h"

namespace {

using namespace survey;

TEST(SurveyText, EveryCodeOfEbuLatinHasItsCharacter) {
  std::string table;
  for (unsigned code = 0; code < 256; ++code) {
    const std::string label = decode_label(std::string{'<', static_cast<char>(code), '>'}, 0);
    std::string_view rest = std::string_view(label).substr(1);
    char text[16] = " ----";
    if (rest != ">") std::snprintf(text, sizeof text, " %04X", static_cast<unsigned>(take_character(rest)));
    EXPECT_EQ(rest, ">");
    if (code % 16 == 0) table += "0123456789ABCDEF"[code / 16] + std::string("_");
    table += text;
    if (code % 16 == 15) table += '\n';
  }
  EXPECT_EQ(table, expected("ebu_latin.txt"));
}

TEST(SurveyText, OtherCharacterSetsAndDamage) {
  using namespace std::string_literals;
  const struct {
    std::string bytes;
    unsigned charset;
    std::string label;
  } rows[] = {
      {"   ", 0, ""},
      {"\x5C$  ", 0, "Ůł"},
      {"M\xFCnchen \0 \0"s, 4, "München"},
      {"A\0B\0"s, 15, "A\0B"s},
      {"\0R\x20\x1C\0d\x20\x20\x20\x20"s, 6, "R“d"},
      {"\0R\x01\0\0 \0\0\0\0"s, 6, "RĀ"},
      {"\0A\0 \xD8\x3D\0 "s, 6, "A \uFFFD"},
      {"Gr\xC3\xBC\xC3\x9F  ", 15, "Grüß"},
      {"\xF0\x9F\x93\xBB \xC3 \xED\xA0\x80\xC0\xAF\xF4\x90x\xE2\x82", 15,
       "📻 \uFFFD \uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDx\uFFFD"},
      {"Rock\xE9", 1, "Rock\uFFFD"},
  };
  for (const auto& row : rows) EXPECT_EQ(decode_label(row.bytes, row.charset), row.label);
  EXPECT_EQ(visible("a\x1B\x7F\u009B\u202E\u2066\u200F\u2028\u2029ä"),
            "a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDä");
  EXPECT_EQ(folded("RÁDIO Žluťoučký ÖŸŊ"), "rádio žluťoučký öÿŋ");
  EXPECT_EQ(folded("Ο ΣΚΑΪ ΤΟΣ"), folded("ο σκαϊ τος"));
}

// A scan as it is written, with these bytes as label of its only service, and as answer for the street.
std::string raw_scan(std::string label, const std::string& street, unsigned charset = 0) {
  label.resize(16, '.');
  std::string text = expected("scan.json");
  const size_t key = text.find("\"SICharset\"");
  text.replace(key, text.find("\"ComponentList\"", key) - key,
               "\"SICharset\": " + std::to_string(charset) + ",\n\"Label\": \"" + label + "\",\n");
  const size_t answer = text.find("Way\"");
  return text.replace(answer, 3, street);
}

Scan_file read_scan(const std::string& bytes, const std::string& name) { return read_scans(bytes, name).at(0); }

const Service& first_service(const Scan& scan) { return scan.entries.at(1).services.at(0); }

TEST(SurveyReader, EveryByteMayBeInLabelsAndAnswers) {
  for (unsigned first = 0; first < 256; first += 16)
    for (const unsigned charset : {0U, 4U, 6U, 15U}) {
      std::string label;
      for (unsigned i = 0; i < 16; ++i) label += static_cast<char>(first + i);
      std::string street = label;
      std::erase(street, '\n');
      const Scan_file file = read_scan(raw_scan(label, street, charset), "scan.json");
      EXPECT_EQ(first_service(file.scan).label, decode_label(label, charset)) << first;
      EXPECT_EQ(file.scan.location.street, valid_utf8(street)) << first;
      // What is written here is read again as the same, also by way of other programs.
      const std::string line = json_line(file);
      EXPECT_EQ(json_line(read_scan(line, "scan.json")), line) << first;
    }
  // Text that could be taken for the text around it.
  for (const std::string label : {"\",\n\"ComponentLis", "\"Label\": \"\\u000\\", "\",\"Label\":\"\",\",\""})
    EXPECT_EQ(first_service(read_scan(raw_scan(label, "a\",\\", 4), "x").scan).label, label);
  EXPECT_EQ(read_scan(raw_scan("Sixteen letters.", "\"ensembleList\": \"Label\": \"\",\""), "x").scan.location.street,
            "\"ensembleList\": \"Label\": \"\",\"");
  // A byte order mark does not make the bytes behind it JSON.
  EXPECT_EQ(read_scan("\xEF\xBB\xBF" + raw_scan("", "\\u0041"), "x").scan.location.street, "\\u0041");
}

TEST(SurveyReader, LabelsThatOtherProgramsWrote) {
  const struct {
    std::string members, label;
  } rows[] = {
      {R"("Label":"$34567\u00e9","ComponentList")", "$34567é"},  // not 16 bytes: text
      {R"("Label" : "$345678901234567",
          "ComponentList")",
       "ł345678901234567"},  // as it was received
      {R"("Label":"\u0024345678901234   ","X":0,"ComponentList")",
       "ł345678901234"},  // the same, members in another order
      {R"("Label":"a\"a, \uFFFD","X":0,"ComponentList")", "a\"a, \uFFFD"},
  };
  for (const auto& row : rows) {
    std::string text = raw_scan("", "Way").insert(1, " ");
    const size_t key = text.find("\"Label\"");
    const size_t end = text.find(" [", key);
    text.replace(key, end - key, row.members + ":");
    EXPECT_EQ(first_service(read_scan(text, "x").scan).label, row.label);
  }
}

std::string fault_of(const std::string& bytes) {
  try {
    static_cast<void>(read_scan(bytes, "cut.json"));
  } catch (const File_error& error) {
    return error.what();
  }
  return "none";
}

TEST(SurveyReader, ACutFileIsRefusedWithItsLastLine) {
  std::string whole = raw_scan("AB\"C\\D\xD7 \x1B end\\", "x\"y");
  whole = whole.substr(0, whole.find(",{\n\"EnsemleNo\": 2")) + "]}";
  ASSERT_EQ(std::ranges::count_if(read_scan(whole, "whole.json").scan.entries, &Entry::measured), 2);
  const size_t first_service_end = whole.find("\"ServiceNo\": 1");
  for (size_t size = 0, line = 1; size < whole.size(); ++size) {
    const bool line_end = size != 0 && whole[size - 1] == '\n';
    const std::string start = "cut.json: line " + std::to_string(line) + ": expected ";
    if (line_end) ++line;
    if (line_end || size < first_service_end) {
      ASSERT_EQ(fault_of(whole.substr(0, size)).substr(0, start.size()), start) << size;
    }
  }
  EXPECT_EQ(fault_of(raw_scan("line\nfeeds\n\n", "Way") + "]"),
            "cut.json: line " + std::to_string(std::ranges::count(expected("scan.json"), '\n') + 4) +
                ": expected the end of the file or another scan");
}

TEST(SurveyReader, RefusesWhatNoScanWrites) {
  const std::string good =
      R"({"content":"FullStationScan","Location":{"StreetNo":"","Street":"","PostalCode":"","City":"","Country":"",
"Floor":"","gps_latitude":"","gps_longitude":""},"ensembleList":[
{"EnsemleNo":40,"DigradStatus":{"acq":1,"valid":1,"rssi":254,"snr":-128,"fft_offset":3,"FIC_quality":101,"tune_freq":0},
"DigitalServiceList":{"NumberServices":1,"ServiceList":[{"ServId":4294967295,"AudioOrDataFlag":1,"ProgramType":31,"CAId":0,"SICharset":15,
"Label":"x","ComponentList":[{"comp_ID":65535,"TMID":3,"CA_flag":0,"ps":0,"ASCTyDSCTy":63}]}]},
"ensembleTime":{"year":2026,"month":2,"day":30,"hour":0,"minute":0,"second":0}}]})";
  const Entry entry = read_scan(good, "x").scan.entries.at(0);
  EXPECT_EQ(entry.rssi, -2);
  EXPECT_EQ(entry.snr, -128);
  EXPECT_EQ(entry.fic_quality, 100);
  EXPECT_EQ(entry.frequency, 239200);  // of the index: the chip could not be read
  EXPECT_FALSE(entry.time);            // there is no such day
  const std::string many_entries = [] {
    std::string list = "\"ensembleList\":[0";
    for (int i = 1; i < 42; ++i) list += ",\n0";
    return list + "],\"x\":[";
  }();
  const struct {
    std::string text, instead, fault;
  } rows[] = {
      {good, "", "line 1: expected "},
      {"{", "[", "line 1: expected "},
      {"FullStationScan", "Other", "line 1: expected \"FullStationScan\""},
      {"\"Floor\":\"\",", "", "line 1: expected the member \"Floor\" in this object"},
      {"\"Floor\":\"\"", "\"Floor\":7", "line 2: expected a text as \"Floor\""},
      {"\"Floor\"", "\"City\"", "line 2: expected the member \"City\" once only"},
      {"\"Floor\":\"\"", "\"Floor\":\"\xE4\"", "line 2: expected "},
      {"\"ensembleList\":[", many_entries, "line 43: expected at most 41 elements"},
      {"\"EnsemleNo\":40", "\"EnsemleNo\":41", "line 3: expected \"EnsemleNo\" from 0 to 40"},
      {"\"rssi\":254", "\"rssi\":256", "line 3: expected \"rssi\" from -128 to 255"},
      {"\"snr\":-128", "\"snr\":-1.5", "line 3: expected a whole number"},
      {"\"acq\":1", "\"acq\":true", "line 3: expected a number, a text, an object or an array"},
      {"\"acq\":1", "\"acq\":99999999999999999999", "line 3: expected a smaller number"},
      {"\"acq\":1", "\"acq\":1,\"cnr\":\"\"", "line 3: expected a number"},
      {"\"SICharset\":15", "\"SICharset\":16", "line 4: expected \"SICharset\" from 0 to 15"},
      {"\"Label\":\"x\"", "\"Label\":7", "line 5: expected a text as \"Label\""},
      {"\"TMID\":3", "\"TMID\":[]", "line 5: expected less deeply nested values"},
      {"\"ComponentList\":[", "\"ComponentList\":[0,", "line 5: expected an object"},
      {"\"month\":2", "\"month\":256", "line 6: expected \"month\" from 0 to 255"},
      {"}}]}", "}},\n" + good.substr(good.find("{\"EnsemleNo\"")),
       "line 7: expected an entry with another \"EnsemleNo\""},
      {"}}]}", "}}]}}", "line 6: expected the end of the file"},
  };
  for (const auto& row : rows) {
    std::string text = good;
    const size_t place = text.find(row.text);
    ASSERT_NE(place, text.npos) << row.text;
    const std::string start = "cut.json: " + row.fault;
    EXPECT_EQ(fault_of(text.replace(place, row.text.size(), row.instead)).substr(0, start.size()), start);
  }
}

TEST(SurveyExports, NoTextOfCsvIsAFormula) {
  const struct {
    std::string city, field;
  } rows[] = {
      {"=1", "'=1"},           {"+1 2", "'+1 2"},    {"-a", "'-a"}, {"@a", "'@a"}, {"  =1", "'  =1"},
      {"\uFF1D1", "'\uFF1D1"}, {"-47.37", "-47.37"}, {"+5", "+5"},  {"=5", "'=5"}, {"\t=\r\n1", "\uFFFD=\uFFFD\uFFFD1"},
      {"a\"=", "a\"\"="},      {"-", "'-"},
  };
  for (const auto& row : rows) {
    const Scan scan{.location = {.city = row.city}, .entries = {{.services = {Service{.id = 1}}}}};
    const std::string start = R"("","","","",")" + row.field + '"';
    EXPECT_EQ(csv_lines(scan).substr(0, start.size()), start);
  }
}

}  // namespace
