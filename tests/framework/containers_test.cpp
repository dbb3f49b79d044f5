// The string and container classes of the exported interface.
#include "framework/CArray.h"
#include "framework/CList.h"
#include "framework/CPoint.h"
#include "framework/CString.h"

#include <gtest/gtest.h>

TEST(String, FormatsAndAppends) {
  CString text;
  text.Format("%s_%d", "Dialog", 2);
  EXPECT_EQ("Dialog_2", text);
  text.AppendFormat("|%lld", -5LL);
  EXPECT_EQ("Dialog_2|-5", text);
  text.Format("%s", "");
  EXPECT_TRUE(text.IsEmpty());
}

TEST(String, CutsOutOfRangePartsToWhatThereIs) {
  const CString text("host.exe");
  EXPECT_EQ("host", text.Left(4));
  EXPECT_EQ("host.exe", text.Left(40));
  EXPECT_EQ("", text.Left(-1));
  EXPECT_EQ("exe", text.Mid(5));
  EXPECT_EQ("", text.Mid(9));
  EXPECT_EQ(4, text.Find('.'));
  EXPECT_EQ(-1, text.Find('.', 5));
  EXPECT_EQ(5, text.Find("exe"));
  EXPECT_EQ(7, text.ReverseFind('e'));
}

TEST(String, KeepsZeroBytesThatAreGivenWithALength) {
  const CString text("a\0b", 3);
  EXPECT_EQ(3, text.GetLength());
  EXPECT_NE(CString("a"), text);
}

TEST(Array, RaisesInvalidArgumentForAnIndexThatDoesNotExist) {
  CArray<int, int> numbers;
  EXPECT_THROW(numbers[0], CInvalidArgException);
  EXPECT_EQ(0, numbers.Add(7));
  EXPECT_EQ(7, numbers[0]);
  EXPECT_THROW(numbers.GetAt(-1), CInvalidArgException);
  EXPECT_THROW(numbers.SetAt(1, 8), CInvalidArgException);
}

TEST(Array, ClosesUpBehindAnElementThatIsRemoved) {
  CArray<int, int> numbers;
  for (const int number : {7, 8, 9})
    numbers.Add(number);
  numbers.RemoveAt(1);
  ASSERT_EQ(2, numbers.GetSize());
  EXPECT_EQ(7, numbers[0]);
  EXPECT_EQ(9, numbers[1]);
  EXPECT_THROW(numbers.RemoveAt(2), CInvalidArgException);
}

TEST(List, WalksBothWaysAndKeepsPositionsValid) {
  CList<int, int> numbers(10);
  numbers.AddTail(1);
  const POSITION two = numbers.AddTail(2);
  numbers.AddTail(3);

  POSITION position = numbers.GetHeadPosition();
  EXPECT_EQ(1, numbers.GetNext(position));
  EXPECT_EQ(two, position);
  position = numbers.GetTailPosition();
  EXPECT_EQ(3, numbers.GetPrev(position));
  EXPECT_EQ(2, numbers.GetPrev(position));
  EXPECT_EQ(1, numbers.GetPrev(position));
  EXPECT_EQ(nullptr, position);

  numbers.RemoveAt(two);
  EXPECT_EQ(1, numbers.RemoveHead());
  EXPECT_EQ(3, numbers.RemoveTail());
  EXPECT_TRUE(numbers.IsEmpty());
}

TEST(List, RaisesInvalidArgumentWhenThereIsNoElement) {
  CList<int, int> numbers;
  EXPECT_THROW(numbers.GetTail(), CInvalidArgException);
  EXPECT_THROW(numbers.RemoveHead(), CInvalidArgException);
  EXPECT_EQ(nullptr, numbers.GetTailPosition());
}

TEST(Point, ReadsSignedWordsOfAMouseMessage) {
  EXPECT_EQ(CPoint(-1, 10), CPoint(MAKELPARAM(0xFFFF, 10)));
  EXPECT_EQ(CPoint(32767, -32768), CPoint(MAKELPARAM(0x7FFF, 0x8000)));
}
