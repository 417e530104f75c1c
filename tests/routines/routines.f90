! The routines called from Fortran: one of each way to pass arguments. The first command-line argument names a scratch file.
module vorant_routines
    use, intrinsic :: iso_c_binding
    implicit none
    interface
        function ASAME(a, na, b, nb) bind(C, name="ASAME")
            import
            character(kind=c_char), intent(in) :: a(*), b(*)
            integer(c_int32_t), intent(in) :: na, nb
            integer(c_int32_t) :: ASAME
        end function
        function COMMENTLINE(line, n) bind(C, name="COMMENTLINE")
            import
            character(kind=c_char), intent(inout) :: line(*)
            integer(c_int32_t), intent(in) :: n
            integer(c_int32_t) :: COMMENTLINE
        end function
        function AREALD8(value, decimals, text, n) bind(C, name="AREALD8")
            import
            real(c_double), intent(in) :: value
            integer(c_int32_t), intent(in) :: decimals, n
            character(kind=c_char), intent(out) :: text(*)
            integer(c_int32_t) :: AREALD8
        end function
        function FILENAMEPATHNO_(name, n, res, nres) bind(C, name="FILENAMEPATHNO_")
            import
            character(kind=c_char), intent(in) :: name(*)
            character(kind=c_char), intent(out) :: res(*)
            integer(c_int32_t), intent(in) :: n, nres
            integer(c_int32_t) :: FILENAMEPATHNO_
        end function
        function OPENTEXT(name, n) bind(C, name="OPENTEXT")
            import
            character(kind=c_char), intent(in) :: name(*)
            integer(c_int32_t), intent(in) :: n
            integer(c_int32_t) :: OPENTEXT
        end function
        function READLINE(handle, line, n) bind(C, name="READLINE")
            import
            integer(c_int32_t), intent(in) :: handle, n
            character(kind=c_char), intent(out) :: line(*)
            integer(c_int32_t) :: READLINE
        end function
        function DISTANCE_8(x1, y1, x2, y2) bind(C, name="DISTANCE_8")
            import
            real(c_double), intent(in) :: x1, y1, x2, y2
            real(c_float) :: DISTANCE_8
        end function
        function INSIDE_POLYGON_8(xp, yp, xs, ys, n, xmin, ends, parts) bind(C, name="INSIDE_POLYGON_8")
            import
            real(c_double), intent(in) :: xp, yp, xs(*), ys(*), xmin
            integer(c_int32_t), intent(in) :: n, ends(*), parts
            integer(c_int32_t) :: INSIDE_POLYGON_8
        end function
        function INTERPOLATE_ELEMENT_8(xp, yp, xs, ys, values, n, xmin, val) bind(C, name="INTERPOLATE_ELEMENT_8")
            import
            real(c_double), intent(in) :: xp, yp, xs(*), ys(*), xmin
            real(c_float), intent(in) :: values(*)
            integer(c_int32_t), intent(in) :: n
            real(c_float), intent(out) :: val
            integer(c_int32_t) :: INTERPOLATE_ELEMENT_8
        end function
        subroutine HYD_PARAM(x1, z1, x2, z2, h, wet, area, width, perimeter) bind(C, name="HYD_PARAM")
            import
            real(c_float), intent(in) :: x1, z1, x2, z2, h, wet
            real(c_float), intent(out) :: area, width, perimeter
        end subroutine
    end interface
end module

program routines
    use vorant_routines
    implicit none
    integer :: failures = 0, unit, part
    integer(c_int32_t) :: got, handle
    character(len=12) :: text
    character(len=500) :: name
    real(c_float) :: area, width, perimeter, val
    real(c_double) :: xs(6) = [500000d0, 500008d0, 500008d0, 500000d0, 500000d0, 500008d0]
    real(c_double) :: ys(6) = [0d0, 0d0, 4d0, 4d0, 0d0, 0d0]

    call check(btest(ASAME("asc   ", 6, '"ASC"', 5), 0), "ASAME, true")
    call check(.not. btest(ASAME("asc", 3, "ascii", 5), 0), "ASAME, false")
    text = "  12 # note"
    got = COMMENTLINE(text, len(text))
    call check(got == 0 .and. text == "12", "COMMENTLINE")
    got = AREALD8(-2.5d0, 2, text, len(text))
    call check(got == 5 .and. text == "-2.50", "AREALD8")
    got = FILENAMEPATHNO_("r\x_h.dat   ", 12, text, len(text))
    call check(got == 3 .and. text == "r\x", "FILENAMEPATHNO_")

    call get_command_argument(1, name)
    open (newunit=unit, file=trim(name), status="replace", action="write")
    write (unit, "(a)") "   first line", "! second"
    close (unit)
    handle = OPENTEXT(name, len(name))
    got = READLINE(handle, text, len(text))
    call check(got == 0 .and. text == "first line", "READLINE, first")
    got = READLINE(handle, text, 3)
    call check(got == 0 .and. text == "! sst line", "READLINE, three characters of the text")
    got = READLINE(handle, text, len(text))
    call check(got == -1 .and. text == "", "READLINE, end")

    call check(DISTANCE_8(0d0, 6250000d0, 3d0, 6250004d0) == 5.0, "DISTANCE_8")
    do part = 1, 2
        call check(btest(INSIDE_POLYGON_8(500000d0 + 6d0*part, 1d0, xs, ys, 6, 500000d0, [5], 1), 0) .eqv. part == 1, &
                   "INSIDE_POLYGON_8")
    end do
    got = INTERPOLATE_ELEMENT_8(500004d0, 2d0, xs, ys, [0.0, 0.0, 4.0, 4.0], 4, 500000d0, val)
    call check(got == -1 .and. val == 2.0, "INTERPOLATE_ELEMENT_8")
    call HYD_PARAM(0.0, 0.0, 4.0, 3.0, 5.0, 1.0, area, width, perimeter)
    call check(area == 14.0 .and. width == 4.0 .and. perimeter == 5.0, "HYD_PARAM")
    if (failures > 0) error stop 1
    print "(a)", "0 failures"
contains
    subroutine check(good, what)
        logical, intent(in) :: good
        character(len=*), intent(in) :: what
        if (good) return
        print "(a)", "Failed: "//what
        failures = failures + 1
    end subroutine
end program
