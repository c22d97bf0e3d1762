# What becomes of files when the disk, the power or another program fails the program.
add_library(file_house STATIC file_house.cpp file_operations.cpp)
target_link_libraries(file_house PUBLIC test_support library setup)
if(KVO_SANITIZE)
    set_target_properties(file_house PROPERTIES EXCLUDE_FROM_ALL ON)
endif()

kvo_fault_program(two_programs file_house)

# These take over the names of the system's C library.
if(UNIX AND NOT APPLE)
    add_library(system_calls STATIC system_calls.cpp)
    target_link_libraries(system_calls PUBLIC test_support ${CMAKE_DL_LIBS})
    if(KVO_SANITIZE)
        set_target_properties(system_calls PROPERTIES EXCLUDE_FROM_ALL ON)
    endif()
    foreach(program failing_calls killed_calls power_cut full_disk hostile_names)
        kvo_fault_program(${program} file_house system_calls)
    endforeach()
endif()
