#include "quor/platform/Base.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

using quor::DateTime;
using quor::readDateTime;

TEST(DateTimes, WhatCannotBeRead) {
    std::istringstream texts(
        ", ,-,NA,2012-06,2012-06-2,2012-6-21,2012-06-21x,2012-06-2109:30:00,2012-06-21 09:30,"
        "2012-06-21 9:30:00,2012-06-21 24:00:00,2012-06-21 09:60:00,2012-06-21 09:30:60,"
        "2012-06-21 09:30:00.,2012-06-21 09:30:00.1x,2012-06-21 x,21-06-12,21-06-2012-,2012-13-01,"
        "2012-00-01,2012-06-31,2012-06-00,2011-02-29,1900-02-29,0000-01-01,09:30,09:30:0,09:3:00,9:30:00,"
        "12,12-,12:,2012/06/21,+012-06-21,");
    for (std::string text; std::getline(texts, text, ',');)
        EXPECT_EQ(readDateTime(text.c_str()).day, DateTime::kUnreadable) << text;
    EXPECT_EQ(readDateTime(nullptr), readDateTime("NA"));
}

TEST(DateTimes, EachStandsBeforeTheNextAndItsFormsAreEqual) {
    const std::vector<const char*> rising[] = {
        {"no date", "00:00:00", "09:30:00", "09:30:00.000000001", "09:30:00.5", "23:59:59.999999999"},
        {"23:59:59", "0001-01-01", "1900-02-28", "1900-03-01", "2000-02-29", "2000-03-01 00:00:00.1"},
        {"2000-03-01 00:00:01", "31-12-2011 23:59:59", "2012-01-01", " 01-01-2012 00:00:01 ", "2012-01-01  09:00:00"},
        {"2012-01-01 10:00:00", "29-02-2012", "2012-03-01", "9999-12-31 23:59:59.9999999999999"}};
    for (const auto& row : rising)
        for (std::size_t i = 1; i < row.size(); ++i)
            EXPECT_LT(readDateTime(row[i - 1]), readDateTime(row[i])) << row[i - 1] << " | " << row[i];
    EXPECT_EQ(readDateTime("2012-06-21 09:30:00.5"), readDateTime("21-06-2012 09:30:00.500000000"));
    EXPECT_EQ(readDateTime("09:30:00"), readDateTime("\t09:30:00.0\n"));
}

TEST(DateTimes, DaysFollowTheCalendarWithoutAGap) {
    std::int32_t previous = readDateTime("31-12-1895").day;
    CString text;
    for (int year = 1896; year <= 2404; ++year) {
        for (int monthAndDay = 101; monthAndDay <= 1231; ++monthAndDay) {
            text.Format("%04d-%02d-%02d", year, monthAndDay / 100, monthAndDay % 100);
            const std::int32_t number = readDateTime(text).day;
            if (number == DateTime::kUnreadable) continue;
            ASSERT_EQ(number, previous + 1) << text.GetString();
            previous = number;
        }
    }
    EXPECT_EQ(previous - readDateTime("31-12-1895").day,
              509 * 365 + 124);  // 128 fourth years less 1900, 2100, 2200, 2300
}

}  // namespace
