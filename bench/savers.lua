-- For wrk: each request saves an event, of one user after the other. Usage: ... -- COOKIES, a file with a line for each
-- user, "NAME<space>COOKIES". Prints how many saves were not acknowledged.
local users, last, refused = {}, 0, 0

function init(args)
  for line in io.lines(args[1]) do
    local name, cookies = line:match("^(%S+) (.*)$")
    local form = "title=Lunch&reptype=none&date1=3%2F15%2F2004&time1=12%3A00&time2=13%3A00" ..
      "&addinfo=At+the+usual+place&calendar=" .. name
    users[#users + 1] = wrk.format("POST", "/month?p=e&act=save",
      {["Content-Type"] = "application/x-www-form-urlencoded", ["Cookie"] = cookies}, form)
  end
end

function request()
  last = last % #users + 1
  return users[last]
end

function response(status)
  if status ~= 302 then
    refused = refused + 1
    print("not acknowledged: " .. refused .. ", status " .. status)
  end
end
