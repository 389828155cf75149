! A Fortran host of the installed library: opens the job named on the command
! line and prints the same lines as the C host. Strings go over with their
! length as a 64-bit integer by value after all other arguments.
module tmrdar_interface
  use, intrinsic :: iso_c_binding, only: c_char, c_float, c_int32_t, c_int64_t
  implicit none
  interface
    integer(c_int32_t) function get_database_info(motion, force, motion_words, force_words, n, dims, path, &
                                                  path_length) bind(C, name='GetDatabaseInfo')
      import :: c_char, c_int32_t, c_int64_t
      integer(c_int32_t), intent(out) :: motion, force, motion_words(5), force_words(5)
      integer(c_int32_t), intent(in) :: n
      integer(c_int32_t), intent(out) :: dims(*)
      character(kind=c_char), intent(in) :: path(*)
      integer(c_int64_t), value :: path_length
    end function get_database_info

    integer(c_int32_t) function get_analysis_details(detail_1, detail_2, detail_3, title, capacity) &
        bind(C, name='GetAnalysisDetails')
      import :: c_char, c_float, c_int32_t, c_int64_t
      integer(c_int32_t), intent(out) :: detail_1, detail_2
      real(c_float), intent(out) :: detail_3
      character(kind=c_char), intent(inout) :: title(*)
      integer(c_int64_t), value :: capacity
    end function get_analysis_details

    integer(c_int32_t) function get_node_properties(motion, force, node, kind, xyz) bind(C, name='GetNodeProperties')
      import :: c_float, c_int32_t
      integer(c_int32_t), intent(in) :: motion, force, node, kind
      real(c_float), intent(out) :: xyz(3)
    end function get_node_properties

    ! The single value and the history differ only in argument 10: one real or
    ! an array of them.
    integer(c_int32_t) function get_requested_single_value(motion, force, output_type, subtype, node, element, &
                                                           position, steps, step, value, label, label_length) &
        bind(C, name='GetRequestedSingleValue')
      import :: c_char, c_float, c_int32_t, c_int64_t
      integer(c_int32_t), intent(in) :: motion, force, output_type, subtype, steps, step
      integer(c_int32_t), intent(inout) :: node, element, position
      real(c_float), intent(out) :: value
      character(kind=c_char), intent(in) :: label(*)
      integer(c_int64_t), value :: label_length
    end function get_requested_single_value

    integer(c_int32_t) function get_requested_history(motion, force, output_type, subtype, node, element, &
                                                      position, steps, count, values, label, label_length) &
        bind(C, name='GetRequestedHistory')
      import :: c_char, c_float, c_int32_t, c_int64_t
      integer(c_int32_t), intent(in) :: motion, force, output_type, subtype, steps, count
      integer(c_int32_t), intent(inout) :: node, element, position
      real(c_float), intent(out) :: values(*)
      character(kind=c_char), intent(in) :: label(*)
      integer(c_int64_t), value :: label_length
    end function get_requested_history

    integer(c_int32_t) function xit() bind(C, name='XIT')
      import :: c_int32_t
    end function xit
  end interface
end module tmrdar_interface

program fortran_host
  use, intrinsic :: iso_c_binding, only: c_float, c_int32_t, c_int64_t
  use tmrdar_interface
  implicit none
  character(len=256) :: job
  character(len=64) :: title
  character(len=*), parameter :: label = 'Hang-off'
  integer(c_int32_t) :: motion, force, motion_words(5), force_words(5), dims(14), result
  integer(c_int32_t) :: detail_1, detail_2, node, element, position
  real(c_float) :: detail_3, xyz(3), time, times(3)

  if (command_argument_count() /= 1) then
    write (0, '(a)') 'usage: fortran_host JOB'
    stop 2
  end if
  call get_command_argument(1, job)

  result = get_database_info(motion, force, motion_words, force_words, 14_c_int32_t, dims, job, &
                             int(len_trim(job), c_int64_t))
  call check('GetDatabaseInfo', result)
  write (*, '(a, i0, 1x, i0)') 'codes ', motion, force
  write (*, '(3(a, i0))') 'steps ', dims(1), ' elements ', dims(3), ' nodes ', dims(4)

  result = get_analysis_details(detail_1, detail_2, detail_3, title, int(len(title), c_int64_t))
  call check('GetAnalysisDetails', result)
  write (*, '(2a)') 'title ', trim(title)

  if (get_node_properties(motion, force, 1_c_int32_t, 0_c_int32_t, xyz) /= 1) stop 1
  write (*, '(4a)') 'node 1 x ', fixed(xyz(1)), ' z ', fixed(xyz(3))

  node = 0
  element = 0
  position = 0
  result = get_requested_single_value(motion, force, 1_c_int32_t, 1_c_int32_t, node, element, position, dims(1), &
                                      1_c_int32_t, time, ' ', 1_c_int64_t)
  call check('GetRequestedSingleValue', result)
  write (*, '(2a)') 'time of step 1 ', fixed(time)
  result = get_requested_history(motion, force, 1_c_int32_t, 1_c_int32_t, node, element, position, dims(1), &
                                 3_c_int32_t, times, ' ', 1_c_int64_t)
  call check('GetRequestedHistory', result)
  write (*, '(6a)') 'times ', fixed(times(1)), ' ', fixed(times(2)), ' ', fixed(times(3))

  ! No node or element number: the label names the node, and its row's kind
  ! lands in the position.
  result = get_requested_single_value(motion, force, 5_c_int32_t, 1_c_int32_t, node, element, position, dims(1), &
                                      1_c_int32_t, time, label, int(len(label), c_int64_t))
  call check('GetRequestedSingleValue', result)
  write (*, '(3a, i0, a, i0)') 'label ', label, ' node ', node, ' position ', position
  if (xit() /= 0) stop 1

contains

  ! A real with three decimals and no blanks, as C's %.3f writes it (F0.3
  ! would leave out the zero before the point).
  function fixed(x) result(text)
    real(c_float), intent(in) :: x
    character(len=:), allocatable :: text
    character(len=32) :: buffer
    write (buffer, '(f32.3)') x
    text = trim(adjustl(buffer))
  end function fixed

  subroutine check(call_name, code)
    character(len=*), intent(in) :: call_name
    integer(c_int32_t), intent(in) :: code
    if (code /= 0) then
      write (0, '(2a, i0)') call_name, ' returned ', code
      stop 1
    end if
  end subroutine check

end program fortran_host
