// A file in which every construct occurs that is imported, as a whole.

#include "support/ImportedModel.h"

#include <gtest/gtest.h>

namespace {

TEST(WholeModel, IsWhatTheFileSays) {
    EXPECT_EQ(ImportedModel::ofFile(PETAL_EXAMPLES "/everything.mdl").tree(), R"(model everything
  package Logical View
    package Overview <<layer>>
      diagram Before anything is read
        shows class Truck
        shows class Driver
        shows association drives: Truck, Driver
    package Fleet
      class Vehicle (abstract, persistent)
        - plate: char[12] = none
        # colour: Colour (by value)
        + count: int (static)
        ~ age: unsigned short (derived)
        + owner: Driver (by reference)
        - untyped: int
        - slot: long = 0
        + start(key: char*, force: int = FALSE): boolean
        # stop(): int (static)
        foreign key: slot -> slot of TruckPool
      parameterized class Pool
        template argument Item: class
        template argument size: int = 10
      interface Movable <<Interface>>
      instantiated class TruckPool
        - slot: long = 0
        primary key slot: slot
      class utility Units
      parameterized class utility Sorter
      instantiated class utility TruckSorter
      metaclass VehicleClass
      class Truck
        note: Trucks only.
        + load: double
        - bay: int
        - floor: int
        primary key bay: bay, floor
      generalization is a: Truck -> Vehicle (protected, virtual, friend)
      realization: Truck -> Movable
      dependency converts with: Truck -> Units
      class Driver
        + licence: unsigned long
        - floor: int
        - bay: int
        foreign key: bay, floor -> bay of Truck
      class Shift
      association drives: Truck, Driver
        note: A licence is checked yearly.
        role vehicle: Truck [0..*] (source, navigable, by reference, static)
        role driver: Driver [1] (friend, foreign key bay, floor)
      association Truck_Shift: Truck, Shift
        role: Truck [1] (source)
        role: Shift [1]
      association Shift_Driver: Shift, Driver
        role: Shift [0..*] (source)
        role: Driver [1]
      association fleet: Vehicle, TruckPool (aggregation)
        role members: Vehicle [0..*] (source, foreign key slot)
        role: TruckPool [1] (aggregate)
      diagram Types
        note: Trucks only.
        shows class Vehicle (abstract, persistent)
        shows class Truck
        shows class Driver
        shows interface Movable <<Interface>>
        shows class utility Units
        shows generalization is a: Truck -> Vehicle (protected, virtual, friend)
        shows realization: Truck -> Movable
        shows dependency converts with: Truck -> Units
        shows association drives: Truck, Driver
    package Depot
      class Depot
        - address: VARCHAR2(40)
        - area: NUMBER(10,2)
    diagram Main
      shows class Depot
      shows class Use Case View::Visitor
  package Use Case Classes in Class Diagrams
    class Use Case View::Visitor
  type Colour: SQL_INTEGER (from int, physical name INTEGER, user-defined)
    value Red = Red
    value Green = 2
    value Blue = Blue
  type Driver: undefined (from undefined, physical name Driver, user-defined)
  type NUMBER(10,2): undefined (from undefined, physical name NUMBER(10,2), user-defined)
  type VARCHAR2(40): undefined (from undefined, physical name VARCHAR2(40), user-defined)
  base type binary: SQL_BINARY
  type boolean: SQL_BOOLEAN (from binary, physical name BOOLEAN, user-defined)
  type char*: SQL_BINARY (from binary, physical name BINARY, user-defined)
  type char[12]: SQL_BINARY(12) (from binary, physical name BINARY(12), user-defined)
  type class: undefined (from undefined, physical name class, user-defined)
  type double: SQL_DOUBLE (from number, physical name DOUBLE, user-defined)
  base type int: SQL_INTEGER
  type int: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  type long: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  base type number: SQL_NUMERIC
  base type undefined: undefined
  type unsigned long: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  type unsigned short: SQL_INTEGER (from int, physical name INTEGER, user-defined)
)");
}

} // namespace
